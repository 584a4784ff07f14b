#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace quintara::quotes {

/// Keeps the same text from being written again and again: once a minute, and then how often it
/// came meanwhile. So many different texts pass within a minute, and one that says so in place of
/// the rest. Not for several threads at once.
class Repeats {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr std::size_t kMostTexts = 500;

  /// What is to be written now that this text comes: counts whose minute is over, and the text
  /// itself perhaps.
  std::vector<std::string> passing(std::string text, Time now);
  /// The counts whose minute is over at that time; they are forgotten.
  std::vector<std::string> countsAt(Time now);

 private:
  struct Seen {
    Time until;
    std::size_t more = 0;  ///< times after the first
  };

  std::map<std::string, Seen> seen_;
  Time nextCount_ = Time::max();  ///< when the first minute is over
};

}  // namespace quintara::quotes
