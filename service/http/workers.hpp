#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace quintara::quotes {

/// A limit on threads is a std::system_error that says what could not be done.
template <class Function>
std::jthread startThread(Function function) try {
  return std::jthread(std::move(function));
} catch (const std::system_error& error) {
  throw std::system_error(error.code(), "cannot start a thread");
}

/// Threads that do jobs, the newest first: whoever comes after a flood need not wait for it, and
/// the oldest of too many is told so at once. All threads are there from the start, so that a limit
/// on them shows then and not at some later request.
class Workers {
 public:
  /// Without its turn it is one too many, and should take no time.
  using Job = std::function<void(bool hasTurn)>;

  /// `most` jobs may wait. Throws std::system_error if there cannot be as many threads.
  Workers(std::size_t count, std::size_t most);
  /// Jobs that have begun are waited for, the others dropped.
  ~Workers();
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  /// The job must not throw.
  void add(Job job);

 private:
  void work(const std::stop_token& stop);

  const std::size_t most_;
  std::mutex mutex_;  ///< of the queue
  std::condition_variable_any added_;
  std::deque<Job> jobs_;
  std::vector<std::jthread> threads_;  ///< last, so that the threads end first
};

}  // namespace quintara::quotes
