#pragma once

#include <chrono>
#include <cstddef>

namespace quintara::chartbook {

/// One line on a terminal that says how far a list is. Silent when standard error is no terminal.
class Progress {
 public:
  Progress(std::size_t total, bool quiet);
  /// Takes the line away.
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void step(bool failed);
  /// Makes room for a line of another's.
  void clear() const;

 private:
  using Steady = std::chrono::steady_clock;
  void show();

  const std::size_t total_;
  const bool visible_;
  const Steady::time_point start_ = Steady::now();
  Steady::time_point shown_{};
  std::size_t done_ = 0;
  std::size_t failed_ = 0;
};

}  // namespace quintara::chartbook
