#include "service/http/workers.hpp"

#include <utility>

namespace quintara::quotes {

Workers::Workers(std::size_t count, std::size_t most) : most_(most) {
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
  std::unique_lock lock(mutex_);
  jobs_.push_back(std::move(job));
  const Job tooMany = jobs_.size() > most_ ? std::move(jobs_.front()) : nullptr;
  if (tooMany) {
    jobs_.pop_front();
  }
  lock.unlock();
  added_.notify_one();
  if (tooMany) {
    tooMany(false);
  }
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
    job(true);
  }
}

}  // namespace quintara::quotes
