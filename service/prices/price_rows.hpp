#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "service/prices/price.hpp"

namespace quintara::quotes {

enum Column : std::size_t { kDate, kOpen, kHigh, kLow, kClose, kVolume, kColumns };

/// One row as text, each field without blanks and quotation marks around it.
using Fields = std::array<std::string_view, kColumns>;

using ColumnNames = std::array<std::string, kColumns>;
inline const ColumnNames kUsualNames{"Date", "Open", "High", "Low", "Close", "Volume"};

/// How rows are to be read. Only the volume may be missing, and the date where `undated` says of
/// which day prices without one are.
struct RowRules {
  ColumnNames names = kUsualNames;
  std::function<std::optional<Day>(std::string_view)> readDay = parseDay;
  std::function<Day(const DailyBar& bar)> undated = nullptr;
};

/// What a table of daily prices holds.
struct PriceRows {
  DailyBars bars;
  std::size_t badLines = 0;
  std::size_t cutPrices = 0;   ///< rows with a price of more than ten digits, rounded to ten
  std::size_t cutVolumes = 0;  ///< rows with a volume beyond 64 bits, taken as the largest of them
  std::string problem;         ///< why there are no bars; empty when there are some
  bool readable = false;       ///< there are columns or fields with the right names
  std::vector<std::string> complaints;  ///< of the first bad lines: one line each, escaped

  bool isEmpty() const { return bars.empty() && badLines == 0; }
};

/// Reads rows one after the other. A row that breaks the promises of DailyBar, or repeats the date
/// of an earlier one, is left out and counted.
class RowReader {
 public:
  /// `kind` is what a row is called in complaints. With `comma` a decimal comma is understood.
  RowReader(const RowRules& rules, std::string_view kind, bool comma = false)
      : rules_(rules), kind_(kind), comma_(comma) {}

  void add(std::size_t number, const Fields& fields);
  PriceRows finish();

 private:
  struct Numbered {
    DailyBar bar;
    std::size_t number;
  };

  std::string addGood(std::size_t number, const Fields& fields);
  void complain(std::size_t number, const std::string& what);

  const RowRules& rules_;
  const std::string_view kind_;
  const bool comma_;
  std::vector<Numbered> good_;
  PriceRows result_;
};

}  // namespace quintara::quotes
