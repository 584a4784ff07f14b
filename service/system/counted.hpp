#pragma once

#include <atomic>

namespace quintara::quotes {

/// One more of those that are counted, for as long as it lives.
struct Counted {
  explicit Counted(std::atomic<int>& all) : count(all), number(++all) {}
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ~Counted() { --count; }

  std::atomic<int>& count;
  const int number;  ///< of them when it came, itself included
};

}  // namespace quintara::quotes
