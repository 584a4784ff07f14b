#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "service/prices/column_names.hpp"
#include "service/prices/price_rows.hpp"
#include "service/tables/table_rows.hpp"

namespace quintara::quotes {

/// Which columns of a table hold what.
struct PriceTable {
  static constexpr std::size_t kAbsent = static_cast<std::size_t>(-1);

  char separator = ',';
  std::size_t headerLine = 0;      ///< from 1 on; 0 for none
  std::size_t titleLines = 0;      ///< rows begin below this line
  std::size_t width = 0;           ///< columns that the header has; 0 without a header
  std::vector<std::string> names;  ///< of the columns, as they stand
  std::array<std::size_t, kUses> places{};
  bool shifted = false;  ///< the rows have one more column, in front, than the header
  bool ticks = false;    ///< a price alone, several rows a day

  PriceTable() { places.fill(kAbsent); }
  std::size_t at(Use use) const { return places.at(static_cast<std::size_t>(use)); }
  bool has(Use use) const { return at(use) != kAbsent; }
  void set(Use use, std::size_t place) { places.at(static_cast<std::size_t>(use)) = place; }

  Fields fieldsOf(const TableRows& row) const;
  std::string_view timeOf(const TableRows& row) const { return row[at(Use::Time)]; }
};

struct TableFound {
  std::optional<PriceTable> table;
  std::string problem;  ///< why there is none; one line
  bool named = false;   ///< though there is none some line names columns of prices
};

/// The table by the names of its columns: in one line or, where titles stand above each other, in
/// two or three. Lines above are titles. `separators` are tried in their order.
TableFound tableByNames(std::string_view text, const std::string& separators,
                        const RowRules& rules);

/// The table by places that the rules have instead of names.
TableFound tableByPlaces(std::string_view text, const std::string& separators,
                         const RowRules& rules);

/// What a table without names may be: a date, perhaps with the ticker before it and a time behind
/// it, four prices, perhaps a volume. Whether it is one shows when all its rows were read.
std::vector<PriceTable> tablesWithoutNames(std::string_view text, const std::string& separators,
                                           const RowRules& rules);

/// Whether two tickers mean one security: their letters and digits are the same, or they are but
/// for an exchange's suffix (.US) or prefix (NYSE:) that one of them has.
bool sameTicker(std::string_view one, std::string_view other);
bool almostSameTicker(std::string_view one, std::string_view other);

}  // namespace quintara::quotes
