#include "service/http/connection.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace quintara::quotes {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kRequestTime{5};
constexpr std::chrono::seconds kReplyTime{10};
constexpr milliseconds kLastMoments{500};
constexpr size_t kLargestRequest = 16'384;

int millisecondsUntil(Clock::time_point end) {
  const auto left = std::chrono::ceil<milliseconds>(end - Clock::now()).count();
  return static_cast<int>(std::max<decltype(left)>(left, 0));
}

// Whether `socket` became ready for `event` in time. `stop` is set when the other descriptor became
// readable first; the caller passes -1 to leave it out.
bool waitFor(int socket, short event, int stopping, Clock::time_point end, bool& stop) {
  std::array<pollfd, 2> waits{{{socket, event, 0}, {stopping, POLLIN, 0}}};
  int ready = 0;
  do {
    ready = ::poll(waits.data(), waits.size(), millisecondsUntil(end));
  } while (ready < 0 && errno == EINTR);
  stop = ready > 0 && waits[1].revents != 0;
  return ready > 0 && waits[0].revents != 0;
}

}  // namespace

Connection::Connection(FileHandle socket, int stopping)
    : socket_(std::move(socket)), stopping_(stopping), readUntil_(Clock::now() + kRequestTime) {
  // The waiting is done in poll(), where it can be given a limit over all bytes.
  ::fcntl(socket_.get(), F_SETFL, ::fcntl(socket_.get(), F_GETFL) | O_NONBLOCK);
}

// Unread bytes would make the close a reset, which can take the reply with it on the other side.
Connection::~Connection() {
  ::shutdown(socket_.get(), SHUT_WR);
  for (int i = 0; i < 16; ++i) {
    if (::recv(socket_.get(), buffer_.data(), buffer_.size(), 0) <= 0) {
      break;
    }
  }
}

bool Connection::is_readable() const { return begin_ < end_ || waitToRead(); }

bool Connection::is_writable() const { return true; }  // write() does the waiting

bool Connection::waitToRead() const {
  bool stop = false;
  return waitFor(socket_.get(), POLLIN, stopping_, readUntil_, stop) && !stop;
}

bool Connection::waitToWrite() {
  if (writeUntil_ == Clock::time_point{}) {
    writeUntil_ = Clock::now() + kReplyTime;
  }
  for (;;) {
    bool stop = false;
    const bool ready =
        waitFor(socket_.get(), POLLOUT, stopSeen_ ? -1 : stopping_, writeUntil_, stop);
    if (stop) {
      stopSeen_ = true;
      writeUntil_ = std::min(writeUntil_, Clock::now() + kLastMoments);
    }
    if (ready || !stop) {
      return ready && Clock::now() < writeUntil_;
    }
  }
}

bool Connection::fill() {
  if (received_ >= kLargestRequest || !waitToRead()) {
    return false;
  }
  const auto got = ::recv(socket_.get(), buffer_.data(), buffer_.size(), 0);
  if (got <= 0) {
    return false;
  }
  begin_ = 0;
  end_ = static_cast<size_t>(got);
  received_ += end_;
  return true;
}

ssize_t Connection::read(char* target, size_t size) {
  if (begin_ == end_ && !fill()) {
    return -1;
  }
  const size_t count = std::min(size, end_ - begin_);
  std::memcpy(target, buffer_.data() + begin_, count);
  begin_ += count;
  return static_cast<ssize_t>(count);
}

ssize_t Connection::write(const char* source, size_t size) {
  for (size_t done = 0; done < size;) {
    if (!waitToWrite()) {
      return -1;
    }
    const auto sent = ::send(socket_.get(), source + done, size - done, MSG_NOSIGNAL);
    if (sent < 0 && errno != EAGAIN && errno != EINTR) {
      return -1;
    }
    done += sent > 0 ? static_cast<size_t>(sent) : 0;
  }
  return static_cast<ssize_t>(size);
}

// Only the loopback interface is served, so nobody needs to know.
void Connection::get_remote_ip_and_port(std::string& ip, int& port) const {
  ip.clear();
  port = 0;
}

void Connection::get_local_ip_and_port(std::string& ip, int& port) const {
  get_remote_ip_and_port(ip, port);
}

}  // namespace quintara::quotes
