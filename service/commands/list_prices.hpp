#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>

#include "service/prices/price.hpp"

namespace quintara::quotes {

/// Writes what the price folder offers, one line a file: days, last day and newest close of a
/// ticker, or why it has none. Returns whether there are prices at all. Throws std::system_error if
/// the folder cannot be read.
bool listPrices(const std::filesystem::path& folder, std::ostream& out);

/// "250 days to 20-Nov-26, newest close 12.50".
std::string summaryOf(const DailyBars& bars);

}  // namespace quintara::quotes
