#pragma once

#include <string>
#include <string_view>

#include "service/prices/day_order.hpp"
#include "service/prices/number_signs.hpp"
#include "service/prices/price_table.hpp"

namespace quintara::quotes {

/// What all rows of a table together say.
struct TableEvidence {
  OrderFound order;
  SignFound signs;
  std::string ticker;      ///< what the column of tickers calls the ticker asked for
  int utcOffsetHours = 0;  ///< for dates written as seconds since 1970
  std::string problem;     ///< why the rows cannot be read; one line, escaped
};

/// Goes through all rows.
TableEvidence evidenceOf(std::string_view text, const PriceTable& table, const RowRules& rules);

/// Whether rows above the table's first one, comments and the like are passed over.
bool isRowOf(const TableRows& row, const PriceTable& table);

}  // namespace quintara::quotes
