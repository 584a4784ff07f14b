#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "service/prices/bar_list.hpp"
#include "service/prices/day_forms.hpp"
#include "service/prices/price.hpp"

namespace quintara::quotes {

enum Column : std::size_t { kDate, kOpen, kHigh, kLow, kClose, kVolume, kColumns };

/// One row as text, each field without blanks and quotation marks around it.
using Fields = std::array<std::string_view, kColumns>;

/// The columns of prices, and where each goes.
inline constexpr std::array kPriceColumns{
    std::pair{kOpen, &DailyBar::open}, std::pair{kHigh, &DailyBar::high},
    std::pair{kLow, &DailyBar::low}, std::pair{kClose, &DailyBar::close}};

using ColumnNames = std::array<std::string, kColumns>;
inline const ColumnNames kUsualNames{"Date", "Open", "High", "Low", "Close", "Volume"};

/// How rows are to be read. Only the volume may be missing, and the date where `undated` says of
/// which day prices without one are.
struct RowRules {
  ColumnNames names = kUsualNames;  ///< or places, from 0 on
  DayForms days;                    ///< a table may say the order itself where this does not
  std::function<Day(const DailyBar& bar)> undated = nullptr;
  std::string ticker;  ///< whose rows a table with a column of tickers has to hold; empty for all
  DayOrder region = DayOrder::Unclear;  ///< of the desktop, where a table does not decide
};

/// The decimal sign of a table.
struct NumberSigns {
  bool comma = false;
  bool known = true;  ///< some price has one
};

/// Reads rows one after the other. A row that breaks the promises of DailyBar, or repeats an
/// earlier one, is left out and counted.
class RowReader {
 public:
  /// `kind` is what a row is called in complaints; `most` rows are expected at most.
  RowReader(const RowRules& rules, std::string_view kind, NumberSigns signs = {},
            std::size_t most = 0)
      : rules_(rules), signs_(signs), moments_(rules.days.utcOffsetHours), bars_(kind, most) {}

  /// `time` is a time of day that stands by itself.
  void add(std::size_t number, const Fields& fields, std::string_view time = {});
  void leaveOut(std::size_t number, const std::string& why) { bars_.leaveOut(number, why, false); }
  PriceRows finish() { return bars_.finish(); }

 private:
  struct Row;

  std::string readDate(Row& row, std::string_view date, std::string_view time);
  std::string readPrices(Row& row, const Fields& fields);
  std::string readVolume(Row& row, std::string_view text);
  bool isRemark(const Fields& fields);

  const RowRules& rules_;
  const NumberSigns signs_;
  MomentReader moments_;
  BarList bars_;
  std::string plain_;  ///< the number that is being read
};

/// Why a bar breaks the promises of DailyBar; empty if it does not.
std::string implausible(const DailyBar& bar);

/// A price of a table; no value for what is none.
std::optional<Kept<Price>> priceIn(std::string_view text, bool comma, std::string& plain);

}  // namespace quintara::quotes
