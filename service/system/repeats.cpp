#include "service/system/repeats.hpp"

#include <algorithm>
#include <utility>

namespace quintara::quotes {
namespace {

constexpr std::chrono::minutes kQuiet{1};

}  // namespace

std::vector<std::string> Repeats::passing(std::string text, Time now) {
  std::vector<std::string> lines = countsAt(now);
  if (seen_.size() >= kMostTexts && seen_.count(text) == 0) {
    text = "warning: too many different messages within a minute, the others are left out";
  }
  const auto [seen, first] = seen_.try_emplace(text, Seen{now + kQuiet});
  if (first) {
    nextCount_ = std::min(nextCount_, seen->second.until);
    lines.push_back(std::move(text));
  } else {
    ++seen->second.more;
  }
  return lines;
}

std::vector<std::string> Repeats::countsAt(Time now) {
  std::vector<std::string> lines;
  if (now < nextCount_) {
    return lines;
  }
  nextCount_ = Time::max();
  for (auto seen = seen_.begin(); seen != seen_.end();) {
    const auto& [text, times] = *seen;
    if (now < times.until) {
      nextCount_ = std::min(nextCount_, times.until);
      ++seen;
      continue;
    }
    if (times.more > 0) {
      lines.push_back(text + " (" + std::to_string(times.more) + " times more within a minute)");
    }
    seen = seen_.erase(seen);
  }
  return lines;
}

}  // namespace quintara::quotes
