#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "service/prices/price_rows.hpp"
#include "target.hpp"

namespace quintara::fuzz {

/// The promises of one bar.
inline void checkBar(const quotes::DailyBar& bar) {
  using namespace quotes;
  check(bar.date >= *makeDay(1900, 1, 1) && bar.date <= *makeDay(2099, 12, 31),
        "dates are of the years 1900 to 2099");
  check(bar.low > Price() && bar.low <= std::min(bar.open, bar.close) &&
            bar.high >= std::max(bar.open, bar.close),
        "the prices of a bar fit together");
  check(bar.volume >= 0, "volumes are counts");
}

/// The promises of rows that were read, whatever they were read from. `names` is the length of what
/// the rules brought into problem and complaints.
inline void checkRows(const quotes::PriceRows& rows, std::size_t names = 0) {
  const auto isLine = [&](const std::string& text) {
    return text.size() < 400 + 4 * names &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 127; });
  };
  check(rows.problem.empty() != rows.bars.empty(), "rows hold bars or a problem");
  check(isLine(rows.problem), "a problem is one short line of ASCII");
  const auto notOlder = [](const auto& a, const auto& b) { return a.date >= b.date; };
  check(std::adjacent_find(rows.bars.begin(), rows.bars.end(), notOlder) == rows.bars.end(),
        "bars are oldest first, one for a date");
  for (const auto& bar : rows.bars) checkBar(bar);
  check(rows.complaints.size() == std::min<std::size_t>(rows.badLines, 100),
        "every bad row up to a hundred has its complaint");
  check(std::all_of(rows.complaints.begin(), rows.complaints.end(), isLine),
        "a complaint is one short line of ASCII");
}

}  // namespace quintara::fuzz
