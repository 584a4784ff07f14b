#pragma once

#include <string>

#include "service/prices/price.hpp"

namespace quintara::quotes {

/// A header line and the bars that begin on `first` or later, newest first, each line ended by a
/// line feed.
std::string tableText(const DailyBars& bars, Day first);

/// One line: ticker, last price, date, time, change, open, high, low, volume. `bars` end at today
/// at the latest and are not empty. Open, high, low and volume belong to today: without a bar of
/// today they are N/A, and the latest close is the last price.
std::string quoteText(const std::string& ticker, const DailyBars& bars, Day today);

}  // namespace quintara::quotes
