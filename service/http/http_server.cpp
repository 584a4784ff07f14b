#include "service/http/http_server.hpp"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "service/http/exchange.hpp"
#include "service/http/listening_socket.hpp"

namespace quintara::quotes {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLastMoments{500};
constexpr milliseconds kAfterFailure{100};  // until the next try to accept a connection
constexpr std::size_t kRequestMemory = 16'384;
constexpr int kAcceptedAtOnce = 64;
constexpr unsigned kLibraryLimit = 100'000;  // on connections; ours is lower
constexpr std::chrono::hours kLongestWait{1};

int socketOf(MHD_Connection* connection) {
  return MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
}

// The kernel tells who connected to a socket in the file system.
bool isOwnUser(int socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
         peer.uid == ::geteuid();
}

// Unread bytes would make the close a reset, which can take the reply with it on the other side.
void drain(int socket) {
  std::array<char, 4096> unread{};
  ::shutdown(socket, SHUT_WR);
  for (int i = 0; i < 16 && ::recv(socket, unread.data(), unread.size(), MSG_DONTWAIT) > 0; ++i) {
  }
}

std::string refuseOneTooMany(const std::string&) {
  throw Refusal(MHD_HTTP_SERVICE_UNAVAILABLE, "too many requests wait already");
}

void* began(void*, const char* target, MHD_Connection*) try {
  return new Exchange(target);
} catch (const std::exception&) {
  return nullptr;
}

void completed(void*, MHD_Connection*, void** exchange, MHD_RequestTerminationCode) {
  delete static_cast<Exchange*>(std::exchange(*exchange, nullptr));
}

}  // namespace

HttpServer::HttpServer(std::vector<Endpoint> endpoints, std::size_t workers, Log log)
    : endpoints_(std::move(endpoints)),
      log_(std::move(log)),
      woken_(checked(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), "cannot listen")),
      daemon_(startDaemon()),
      // So that the others who are connected can make room for whoever comes.
      workers_(std::make_unique<Workers>(workers, clients_.most() / 2)),
      thread_(startThread([this] { run(); })) {}

HttpServer::~HttpServer() {
  stopping_ = true;
  wake();
}

HttpServer::Daemon HttpServer::startDaemon() {
  const auto handled =
      +[](void* server, MHD_Connection* connection, const char* path, const char* method,
          const char*, const char*, std::size_t*, void** exchange) {
        try {
          auto* const known = static_cast<Exchange*>(*exchange);
          return known == nullptr
                     ? MHD_NO
                     : static_cast<HttpServer*>(server)->handle(connection, path, method, *known);
        } catch (const std::exception&) {
          return MHD_NO;
        }
      };
  const auto changed =
      +[](void* server, MHD_Connection* connection, void**, MHD_ConnectionNotificationCode what) {
        if (what == MHD_CONNECTION_NOTIFY_CLOSED) {
          drain(socketOf(connection));
          static_cast<HttpServer*>(server)->clients_.remove(socketOf(connection));
        }
      };
  constexpr unsigned kFlags = MHD_USE_EPOLL | MHD_ALLOW_SUSPEND_RESUME | MHD_USE_NO_LISTEN_SOCKET |
                              MHD_USE_SUPPRESS_DATE_NO_CLOCK;
  Daemon daemon(MHD_start_daemon(
      kFlags, 0, nullptr, nullptr, handled, this, MHD_OPTION_CONNECTION_LIMIT, kLibraryLimit,
      MHD_OPTION_CONNECTION_MEMORY_LIMIT, kRequestMemory, MHD_OPTION_URI_LOG_CALLBACK, began,
      nullptr, MHD_OPTION_NOTIFY_COMPLETED, completed, nullptr, MHD_OPTION_NOTIFY_CONNECTION,
      changed, this, MHD_OPTION_END));
  if (!daemon) {
    throw std::runtime_error("cannot listen: the HTTP library does not start");
  }
  return daemon;
}

void HttpServer::run() {
  try {
    serve();
  } catch (const std::exception& error) {
    log_.error(std::string("cannot serve any longer: ") + error.what());
    failed_ = true;
  }
  windUp();
}

void HttpServer::serve() {
  while (!stopping_) {
    turn();
  }
  end_ = Clock::now() + kLastMoments;
  clients_.endAt(end_);
  while (!clients_.isEmpty() && Clock::now() < end_) {
    turn();
  }
}

// The library must not be stopped while connections are suspended, nor before the workers that
// answer them have ended.
void HttpServer::windUp() {
  workers_.reset();
  clients_.forEachWaiting([](const Client& client) { MHD_resume_connection(client.connection); });
  MHD_run(daemon_.get());
  daemon_.reset();
}

void HttpServer::turn() {
  wait();
  clients_.forEachWaiting([](Client& client) {
    if (client.answered.exchange(false)) {
      MHD_resume_connection(client.connection);
    }
  });
  if (accepts()) {
    std::for_each(endpoints_.begin(), endpoints_.end(),
                  [this](const Endpoint& endpoint) { acceptFrom(endpoint); });
  }
  clients_.cutOffTheLate();
  if (MHD_run(daemon_.get()) != MHD_YES) {
    throw std::runtime_error("the HTTP library fails");
  }
}

bool HttpServer::accepts() {
  return !stopping_ && Clock::now() >= acceptAgain_ &&
         (!clients_.isFull() || clients_.canMakeRoom());
}

// Milliseconds until something is to be done though nothing happens.
int HttpServer::patience() {
  MHD_UNSIGNED_LONG_LONG library = 0;
  if (MHD_get_timeout(daemon_.get(), &library) == MHD_YES && library == 0) {
    return 0;  // it has more to do already
  }
  const auto now = Clock::now();
  auto until = std::min({clients_.nextEnd(), end_, now + kLongestWait});
  if (acceptAgain_ > now) {
    until = std::min(until, acceptAgain_);
  }
  const auto left = std::chrono::ceil<milliseconds>(until - now);
  return static_cast<int>(std::max(left, milliseconds{0}).count());
}

void HttpServer::wait() {
  const auto* info = MHD_get_daemon_info(daemon_.get(), MHD_DAEMON_INFO_EPOLL_FD);
  std::vector<pollfd> waits;
  const auto add = [&](int descriptor) { waits.push_back({descriptor, POLLIN, {}}); };
  add(woken_.get());
  add(info->epoll_fd);
  if (accepts()) {
    for (const Endpoint& endpoint : endpoints_) {
      add(endpoint.listening.get());
    }
  }
  const int ready = ::poll(waits.data(), waits.size(), patience());
  if (ready < 0 && errno != EINTR) {
    checked(ready, "cannot wait for connections");
  }
  eventfd_t times = 0;
  ::eventfd_read(woken_.get(), &times);
}

void HttpServer::acceptFrom(const Endpoint& endpoint) {
  for (int i = 0; i < kAcceptedAtOnce && acceptOne(endpoint); ++i) {
  }
}

bool HttpServer::acceptOne(const Endpoint& endpoint) {
  if (clients_.isFull()) {
    clients_.makeRoom();  // which is there at the next turn
    return false;
  }
  sockaddr_storage address{};
  socklen_t size = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  const int socket =
      ::accept4(endpoint.listening.get(), plain, &size, SOCK_NONBLOCK | SOCK_CLOEXEC);
  if (socket < 0) {
    return goOnAfter(errno);
  }
  if (endpoint.kind == Endpoint::Kind::OwnUser && !isOwnUser(socket)) {
    log_.warning("another user of this computer connected and was refused");
    ::close(socket);
    return true;
  }
  clients_.add(socket, endpoint);
  if (MHD_add_connection(daemon_.get(), socket, plain, size) != MHD_YES) {
    clients_.remove(socket);  // closed by the library
  }
  return true;
}

// A connection that ended before it was accepted is none; without descriptors or memory it takes a
// while until there is a chance again, and a client that goes makes it better.
bool HttpServer::goOnAfter(int error) {
  if (error == EINTR || error == ECONNABORTED) {
    return true;
  }
  if (error != EAGAIN) {
    log_.warning("cannot accept a connection: " + std::generic_category().message(error));
    clients_.makeRoom();
    acceptAgain_ = Clock::now() + kAfterFailure;
  }
  return false;
}

MHD_Result HttpServer::handle(MHD_Connection* connection, const char* path, const char* method,
                              Exchange& exchange) {
  Client& client = clients_.at(socketOf(connection));
  if (client.state == Client::State::Asking && workers_ &&
      exchange.mayBeAnswered(connection, path, method, *client.endpoint)) {
    workers_->add([this, &client, &exchange](bool hasTurn) {
      exchange.ask(hasTurn ? client.endpoint->answer : refuseOneTooMany, log_);
      client.answered = true;
      wake();
    });
    client.connection = connection;
    client.state = Client::State::Waiting;
    MHD_suspend_connection(connection);
    return MHD_YES;
  }
  clients_.letTake(client, exchange.size());
  return exchange.reply(connection, log_);
}

void HttpServer::wake() const { ::eventfd_write(woken_.get(), 1); }

}  // namespace quintara::quotes
