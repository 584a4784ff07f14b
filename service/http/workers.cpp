#include "service/http/workers.hpp"

#include <utility>

namespace quintara::quotes {

Workers::Workers(std::size_t count) {
  while (threads_.size() < count) {
    threads_.push_back(startThread([this](const std::stop_token& stop) { work(stop); }));
  }
}

// All at once, and not one after the other as they are destroyed.
Workers::~Workers() {
  for (std::jthread& thread : threads_) {
    thread.request_stop();
  }
}

void Workers::add(Job job) {
  {
    const std::lock_guard lock(mutex_);
    jobs_.push_back(std::move(job));
  }
  added_.notify_one();
}

void Workers::work(const std::stop_token& stop) {
  for (;;) {
    std::unique_lock lock(mutex_);
    added_.wait(lock, stop, [this] { return !jobs_.empty(); });
    if (stop.stop_requested()) {
      return;
    }
    const Job job = std::move(jobs_.back());
    jobs_.pop_back();
    lock.unlock();
    job();
  }
}

}  // namespace quintara::quotes
