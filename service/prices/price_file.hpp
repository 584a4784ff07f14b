#pragma once

#include <string>

#include "service/prices/price_rows.hpp"
#include "service/prices/reading.hpp"

namespace quintara::quotes {

/// What a file of prices, as brokers, exchanges, charting programs and spreadsheets export it,
/// holds.
struct PriceFile : PriceRows {
  Reading reading;
};

/// Recognises encoding, separator, columns, order of dates and decimal sign by the file as a whole
/// and reads its rows. Nothing is guessed: what the file does not say is the problem, with the line
/// and what would help. Names, places and the order of dates that the rules have win over what
/// would be recognised.
PriceFile parsePriceFile(std::string bytes, const RowRules& rules = {});

}  // namespace quintara::quotes
