#include "chartbook/jobs.hpp"

#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <system_error>
#include <vector>

namespace quintara::chartbook {
namespace {

/// In front of every answer on its way.
struct Head {
  std::size_t piece = 0;
  std::size_t length = 0;
};

/// The number of the next piece, in memory that all processes share.
class NextPiece {
 public:
  NextPiece()
      : next_(mmap(nullptr, sizeof(Counter), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1,
                   0)) {
    if (next_ == MAP_FAILED) {
      throw std::system_error(errno, std::generic_category(), "memory for several processes");
    }
    new (next_) Counter(0);
  }
  NextPiece(const NextPiece&) = delete;
  NextPiece& operator=(const NextPiece&) = delete;
  ~NextPiece() { munmap(next_, sizeof(Counter)); }

  std::size_t take() { return static_cast<Counter*>(next_)->fetch_add(1); }

 private:
  using Counter = std::atomic<std::size_t>;
  static_assert(Counter::is_always_lock_free);
  void* next_;
};

void send(int pipe, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::write(pipe, bytes.data(), bytes.size());
    if (sent < 0 && errno != EINTR) {
      _exit(1);
    }
    bytes.remove_prefix(sent > 0 ? static_cast<std::size_t>(sent) : 0);
  }
}

/// A process at work, seen from the one that started it.
class Worker {
 public:
  Worker(std::size_t count, NextPiece& next, const std::function<std::string(std::size_t)>& work) {
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0) {
      throw std::system_error(errno, std::generic_category(), "a pipe");
    }
    const pid_t parent = ::getpid();
    process_ = ::fork();
    if (process_ == 0) {
      ::close(ends[0]);
      ::prctl(PR_SET_PDEATHSIG, SIGTERM);
      if (::getppid() == parent) {  // it may be gone already
        workOn(ends[1], count, next, work);
      }
      _exit(0);
    }
    ::close(ends[1]);
    pipe_ = ends[0];
    if (process_ < 0) {
      ::close(pipe_);
      throw std::system_error(errno, std::generic_category(), "a process");
    }
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  ~Worker() {
    ::close(pipe_);
    ::waitpid(process_, nullptr, 0);
  }

  [[nodiscard]] int pipe() const { return pipe_; }

  /// Takes what has come; false at the end.
  bool receive(const std::function<void(std::size_t, const std::string&)>& done) {
    char bytes[1 << 16];
    const ssize_t got = ::read(pipe_, bytes, sizeof bytes);
    if (got <= 0) {
      return got < 0 && errno == EINTR;
    }
    buffer_.append(bytes, static_cast<std::size_t>(got));
    Head head;
    while (buffer_.size() >= sizeof head) {
      std::memcpy(&head, buffer_.data(), sizeof head);
      if (buffer_.size() < sizeof head + head.length) {
        break;
      }
      done(head.piece, buffer_.substr(sizeof head, head.length));
      buffer_.erase(0, sizeof head + head.length);
    }
    return true;
  }

 private:
  static void workOn(int pipe, std::size_t count, NextPiece& next,
                     const std::function<std::string(std::size_t)>& work) {
    for (std::size_t piece = next.take(); piece < count; piece = next.take()) {
      const std::string answer = work(piece);
      const Head head{piece, answer.size()};
      send(pipe, {reinterpret_cast<const char*>(&head), sizeof head});
      send(pipe, answer);
    }
  }

  pid_t process_ = -1;
  int pipe_ = -1;
  std::string buffer_;
};

}  // namespace

void inProcesses(std::size_t count, std::size_t jobs,
                 const std::function<std::string(std::size_t)>& work,
                 const std::function<void(std::size_t, const std::string&)>& done) {
  NextPiece next;
  std::vector<std::unique_ptr<Worker>> workers;
  for (std::size_t i = 0; i < std::min(jobs, count); ++i) {
    workers.push_back(std::make_unique<Worker>(count, next, work));
  }
  while (!workers.empty()) {
    std::vector<pollfd> waiting;
    waiting.reserve(workers.size());
    for (const auto& worker : workers) {
      waiting.push_back({worker->pipe(), POLLIN, 0});
    }
    ::poll(waiting.data(), waiting.size(), -1);
    for (std::size_t i = workers.size(); i-- > 0;) {
      if (waiting.at(i).revents != 0 && !workers.at(i)->receive(done)) {
        workers.erase(workers.begin() + static_cast<std::ptrdiff_t>(i));
      }
    }
  }
}

}  // namespace quintara::chartbook
