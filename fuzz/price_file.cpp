// Files of daily prices. Input: the file.

#include "service/prices/price_file.hpp"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "checked_rows.hpp"
#include "service/desk/replies.hpp"

namespace quintara::fuzz {

namespace {

using namespace quotes;

void checkFile(const PriceFile& file, std::string_view text) {
  checkRows(file);
  const auto ends = std::count(text.begin(), text.end(), '\n');
  check(file.bars.size() + file.badLines <= static_cast<std::size_t>(ends),
        "no line counts twice, and the header not at all");
}

/// The text of all bars, with prices in every decimal they have.
std::string exactText(const DailyBars& bars) {
  std::string text = "Date,Open,High,Low,Close,Volume\n";
  for (const DailyBar& bar : bars) {
    const std::chrono::year_month_day date{bar.date};
    text += std::to_string(static_cast<int>(date.year())) + '-' +
            std::to_string(static_cast<unsigned>(date.month())) + '-' +
            std::to_string(static_cast<unsigned>(date.day()));
    for (const Price price : {bar.open, bar.high, bar.low, bar.close}) {
      text += ',' + std::to_string(price / kPriceUnit) + '.' +
              std::to_string(kPriceUnit + price % kPriceUnit).substr(1);
    }
    text += ',' + std::to_string(bar.volume) + '\n';
  }
  return text;
}

/// A table's dates have two digits for the year, which stand for 1970 to 2069.
bool inTables(const DailyBars& bars) {
  return !bars.empty() && bars.front().date >= *makeDay(1970, 1, 1) &&
         bars.back().date <= *makeDay(2069, 12, 31);
}

/// Whether one bar is what a table says of the other: cents from 1 upwards.
bool sameToACent(const DailyBar& shown, const DailyBar& bar) {
  const auto same = [](Price a, Price b) {
    return b < kPriceUnit ? a == b : a % 100 == 0 && std::abs(a - b) <= 50;
  };
  return shown.date == bar.date && shown.volume == bar.volume && same(shown.open, bar.open) &&
         same(shown.high, bar.high) && same(shown.low, bar.low) && same(shown.close, bar.close);
}

}  // namespace

void tryInput(std::string_view input) {
  const PriceFile file = parsePriceFile(input);
  checkFile(file, input);
  check(parsePriceFile(exactText(file.bars)).bars == file.bars,
        "what was read reads back the same");
  if (!inTables(file.bars)) return;
  const PriceFile again = parsePriceFile(tableText(file.bars, Day::min()));
  check(again.badLines == 0 && std::equal(again.bars.begin(), again.bars.end(), file.bars.begin(),
                                          file.bars.end(), sameToACent),
        "a table holds every bar to the nearest cent");
}

}  // namespace quintara::fuzz
