#pragma once

#include <condition_variable>
#include <mutex>

namespace quintara::quotes {

/// A mutex that so many may hold at once.
class Turns {
 public:
  explicit Turns(int count) : free_(count) {}

  void lock() {
    std::unique_lock lock(mutex_);
    freed_.wait(lock, [this] { return free_ > 0; });
    --free_;
  }
  void unlock() {
    {
      const std::lock_guard lock(mutex_);
      ++free_;
    }
    freed_.notify_one();
  }

 private:
  std::mutex mutex_;
  std::condition_variable freed_;
  int free_;
};

}  // namespace quintara::quotes
