#pragma once

#include <string_view>

#include "service/prices/price_rows.hpp"
#include "service/prices/reading.hpp"

namespace quintara::quotes {

/// What a file of daily prices, as brokers export it, holds.
struct PriceFile : PriceRows {
  Reading reading;
};

/// The first line that is not blank names the columns Date, Open, High, Low, Close and perhaps
/// Volume, or those of other rules, in any order and case; others are ignored. Commas or semicolons
/// separate, and with semicolons a decimal comma is understood.
PriceFile parsePriceFile(std::string_view text, const RowRules& rules = {});

}  // namespace quintara::quotes
