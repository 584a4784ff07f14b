#include "service/http/listener.hpp"

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <algorithm>
#include <utility>

#include "service/desk/refusal.hpp"
#include "service/http/connection.hpp"
#include "service/http/host_header.hpp"
#include "service/http/listening_socket.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kWorkers = 64;  // one for each connection that is served at the same time

bool meantForLoopback(const httplib::Request& request) {
  const auto [first, last] = request.headers.equal_range("Host");
  return std::all_of(first, last,
                     [](const auto& header) { return namesThisComputer(header.second); });
}

// A browser says so when a page asks, be it that it never gets to see the reply: a page of another
// site could still use up a provider's quota.
bool askedByAPage(const httplib::Request& request) {
  return request.has_header("Origin") || (request.has_header("Sec-Fetch-Site") &&
                                          request.get_header_value("Sec-Fetch-Site") != "none");
}

}  // namespace

Listener::Listener(int port, std::string path, Answer answer, Log log)
    : path_(std::move(path)),
      answer_(std::move(answer)),
      log_(std::move(log)),
      listening_(listenOnLoopback(port)),
      port_(portOf(listening_)),
      stopping_(checked(::eventfd(0, EFD_CLOEXEC), "cannot listen")) {
  setUp();
}

Listener::~Listener() { stop(); }

void Listener::setUp() {
  set_default_headers({{"Server", "quintara-quotes/" QUINTARA_VERSION}});
  new_task_queue = [] { return new httplib::ThreadPool(kWorkers); };
  // Before routing: the body of a request is never read, and no pattern sees the path.
  set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
    reply(request, response);
    return HandlerResponse::Handled;
  });
  set_error_handler([](const httplib::Request&, httplib::Response& response) {
    if (response.body.empty()) {
      response.set_content("not a request that is understood here\n", "text/plain");
    }
  });
}

void Listener::start() {
  svr_sock_ = checked(::fcntl(listening_.get(), F_DUPFD_CLOEXEC, 0), "cannot listen");
  thread_ = std::thread([this] { accept(); });
}

void Listener::accept() {
  listen_after_bind();
  failed_ = !stopped_;
}

void Listener::requestStop() {
  stopped_ = true;
  ::eventfd_write(stopping_.get(), 1);
  // Ends the wait for connections in the library's own thread, which then closes its handle; its
  // stop() would close the handle under that thread.
  ::shutdown(listening_.get(), SHUT_RDWR);
}

void Listener::stop() {
  if (thread_.joinable()) {
    requestStop();
    thread_.join();
  }
}

bool Listener::process_and_close_socket(socket_t socket) {
  Connection connection(FileHandle(socket), stopping_.get());
  bool closed = false;
  return process_request(connection, true, closed, [](httplib::Request& request) {
    request.ranges.clear();  // a table is short; replies in pieces only multiply the work
  });
}

void Listener::reply(const httplib::Request& request, httplib::Response& response) const {
  try {
    if (!meantForLoopback(request)) {
      throw Refusal(403, "this service answers requests to 127.0.0.1 and localhost only");
    }
    if (askedByAPage(request)) {
      throw Refusal(403, "this service does not answer web pages");
    }
    if (request.path != path_) {
      throw Refusal(404, "only " + path_ + " is served here");
    }
    if (request.method != "GET") {
      response.set_header("Allow", "GET");
      throw Refusal(405, "only GET is served here");
    }
    response.set_content(answer_(request.target), "text/csv");
    response.status = 200;
  } catch (const Refusal& refusal) {
    response.status = refusal.status;
    response.set_content(std::string(refusal.what()) + "\n", "text/plain");
  } catch (const std::exception& error) {
    log_.error(escaped(error.what()));
    response.status = 500;
    response.set_content("the service failed; its log says why\n", "text/plain");
  }
  log_.debug(escaped(request.method + " " + request.target) + " " +
             std::to_string(response.status) + " " + std::to_string(response.body.size()));
}

}  // namespace quintara::quotes
