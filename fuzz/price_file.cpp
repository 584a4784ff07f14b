// Files of daily prices. Input: the file.

#include "service/prices/price_file.hpp"

#include <algorithm>
#include <string>

#include "checked_rows.hpp"
#include "service/desk/replies.hpp"

namespace quintara::fuzz {

namespace {

using namespace quotes;

void checkFile(const PriceFile& file, std::string_view text) {
  checkRows(file);
  const auto isEnd = [](char c) { return c == '\n' || c == '\r'; };
  const auto ends = std::count_if(text.begin(), text.end(), isEnd);
  const bool header = file.reading.headerLine > 0;
  check(
      file.rows + file.badLines + file.remarks <= static_cast<std::size_t>(ends + (header ? 0 : 1)),
      "no line counts twice, and the header not at all");
}

/// The text of all bars, with years of four digits.
std::string exactText(const DailyBars& bars) {
  std::string text = "Date,Open,High,Low,Close,Volume\n";
  for (const DailyBar& bar : bars) {
    const std::chrono::year_month_day date{bar.date};
    text += std::to_string(static_cast<int>(date.year())) + '-' +
            std::to_string(static_cast<unsigned>(date.month())) + '-' +
            std::to_string(static_cast<unsigned>(date.day()));
    for (const Price price : {bar.open, bar.high, bar.low, bar.close}) {
      text += ',' + price.text();
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

}  // namespace

void tryInput(std::string_view input) {
  const PriceFile file = parsePriceFile(std::string(input));
  checkFile(file, input);
  check(parsePriceFile(exactText(file.bars)).bars == file.bars,
        "what was read reads back the same");
  if (!inTables(file.bars)) return;
  check(parsePriceFile(tableText(file.bars, Day::min())).bars == file.bars,
        "a table holds every bar exactly");
}

}  // namespace quintara::fuzz
