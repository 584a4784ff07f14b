#include "chartbook/progress.hpp"

#include <unistd.h>

#include <cstdio>
#include <string>

namespace quintara::chartbook {

Progress::Progress(std::size_t total, bool quiet)
    : total_(total), visible_(!quiet && ::isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() { clear(); }

void Progress::clear() const {
  if (visible_) {
    std::fputs("\r\033[K", stderr);
  }
}

void Progress::step(bool failed) {
  ++done_;
  failed_ += failed ? 1 : 0;
  constexpr std::chrono::milliseconds kPause{100};
  if (visible_ && (Steady::now() - shown_ >= kPause || done_ == total_)) {
    show();
  }
}

void Progress::show() {
  shown_ = Steady::now();
  constexpr std::size_t kWidth = 30;
  const std::size_t filled = done_ * kWidth / total_;
  const auto spent = std::chrono::duration_cast<std::chrono::milliseconds>(shown_ - start_);
  const auto left = spent.count() * static_cast<long>(total_ - done_) / static_cast<long>(done_);
  const long seconds = (left + 999) / 1000;
  std::fprintf(stderr, "\r[%s%s] %zu of %zu, %zu failed, %ld:%02ld left\033[K",
               std::string(filled, '#').c_str(), std::string(kWidth - filled, '.').c_str(), done_,
               total_, failed_, seconds / 60, seconds % 60);
}

}  // namespace quintara::chartbook
