#include "data/quote_request.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "values/text.hpp"

namespace quintara {

namespace {

using std::chrono::days;
using std::chrono::months;
using std::chrono::sys_days;

std::string dayText(Date date) { return std::to_string(static_cast<unsigned>(date.day())); }
std::string monthText(Date date) { return std::to_string(static_cast<unsigned>(date.month())); }
std::string yearText(Date date) { return std::to_string(static_cast<int>(date.year())); }

/// Such as 5-Nov-26.
std::string rowDate(Date date) {
  constexpr std::array kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                               "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const std::string year = yearText(date);
  return dayText(date) + "-" + kMonths.at(static_cast<unsigned>(date.month()) - 1) + "-" +
         year.substr(year.size() - 2);
}

/// What stands behind the last piece that is wanted is left out.
std::vector<std::string> split(std::string_view text, char separator,
                               std::size_t most = std::string_view::npos) {
  std::vector<std::string> pieces;
  const auto all = 1 + std::count(text.begin(), text.end(), separator);
  pieces.reserve(std::min(static_cast<std::size_t>(all), most));
  for (;;) {
    const auto end = text.find(separator);
    pieces.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos || pieces.size() == most) {
      return pieces;
    }
    text.remove_prefix(end + 1);
  }
}

Date monthsBefore(Date date, months count) {
  const Date earlier = date - count;
  return earlier.ok() ? earlier : earlier.year() / earlier.month() / std::chrono::last;
}

char intervalLetter(std::int16_t iInterval) {
  constexpr std::string_view kLetters = "dwm";
  return kLetters.at(static_cast<std::size_t>(iInterval));
}

void normalise(std::vector<std::string>& rows) {
  for (auto& row : rows) {
    std::replace(row.begin(), row.end(), ',', '@');
  }
  // Only now is a comma free to stand for the decimal separator.
  if (sDecimalSep != ",") {
    return;
  }
  for (auto& row : rows) {
    std::replace(row.begin(), row.end(), '.', ',');
  }
}

}  // namespace

Date startDate(std::int16_t iInterval, std::int16_t iDuration, Date today) {
  constexpr std::array kDailySpans{days{182}, days{365}, days{547}, days{730}};
  constexpr days kWeeklySpan{220 * 7};
  constexpr months kMonthlySpan{120};
  if (iInterval == 1) {
    return sys_days{today} - kWeeklySpan;
  }
  if (iInterval == 2) {
    return monthsBefore(today, kMonthlySpan);
  }
  const auto span = static_cast<std::size_t>(iDuration);
  if (iInterval != 0 || span >= kDailySpans.size()) {
    throw RuntimeError(ErrorKind::TypeMismatch);
  }
  return sys_days{today} - kDailySpans.at(span);
}

std::string historyPath(const std::string& ticker, Date start, Date today, char intervalLetter) {
  return "/table.csv?s=" + ticker + "&a=" + monthText(start) + "&b=" + dayText(start) +
         "&c=" + yearText(start) + "&d=" + monthText(today) + "&e=" + dayText(today) +
         "&f=" + yearText(today) + "&g=" + intervalLetter + "&q=q&y=0&z=" + ticker + "&x=.csv";
}

std::string quotePath(const std::string& ticker) {
  return "/d/quotes.csv?s=" + ticker + "&f=sl1d1t1c1ohgv&e=.csv";
}

std::string quoteRow(const std::string& reply, Date today) {
  enum Field : std::size_t { kLast = 1, kOpen = 5, kHigh, kLow, kVolume, kFields };
  std::vector<std::string> fields = split(reply, ',', kFields);
  if (fields.size() < kFields) {
    throw RuntimeError(ErrorKind::SubscriptOutOfRange);
  }
  if (fields[kVolume].find("N/A") != std::string::npos) {
    fields[kVolume] = "0";
  }
  // An open of 0, or none at all, keeps the row out of the series.
  if (readLeadingNumber(fields[kOpen]) == 0) {
    fields[kOpen] = "N/A";
  }
  return rowDate(today) + "," + fields[kOpen] + "," + fields[kHigh] + "," + fields[kLow] + "," +
         fields[kLast] + "," + fields[kVolume];
}

bool GetHistoricalData(ChartState& state, const QuoteSource& source) {
  constexpr int kAsText = 0;
  bool usable = false;
  trapErrors([&] {
    const Date today = source.clock.today();
    const Date start = startDate(state.iInterval, state.iDuration, today);
    const std::string table = source.Inet1.OpenURL(
        "http://" + source.hosts.history +
            historyPath(state.sTicker, start, today, intervalLetter(state.iInterval)),
        kAsText);
    const std::string quote =
        source.Inet1.OpenURL("http://" + source.hosts.quotes + quotePath(state.sTicker), kAsText);
    const std::string current = quoteRow(quote, today);
    state.sRows = split(table, '\n');
    state.sRows[0] = current;
    normalise(state.sRows);
    usable = state.sRows.size() > 1 && !state.sRows[1].empty();
  });
  return usable;
}

}  // namespace quintara
