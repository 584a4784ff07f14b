#pragma once

#include "service/prices/price.hpp"

namespace quintara::quotes {

enum class Interval { Daily, Weekly, Monthly };

/// Leaves out the days after `last`.
void cutAfter(DailyBars& bars, Day last);

/// One bar for each calendar week or month that has a trading day: the open and the date of its
/// first day, the close of its last, the extremes and the whole volume. Daily bars stay as they
/// are.
DailyBars aggregated(const DailyBars& days, Interval interval);

/// "250 days from 5-Nov-25 to 20-Nov-26". There has to be a bar.
std::string spanText(const DailyBars& days);

}  // namespace quintara::quotes
