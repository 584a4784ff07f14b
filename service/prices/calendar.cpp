#include "service/prices/calendar.hpp"

#include <array>
#include <ctime>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

using std::chrono::year_month_day;

constexpr std::array<std::string_view, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

int fullYear(int year, std::size_t digits) {
  if (digits != 2) {
    return year;
  }
  return year < 70 ? 2000 + year : 1900 + year;
}

unsigned yearOf(year_month_day date) {
  return static_cast<unsigned>(static_cast<int>(date.year()));
}

std::string dayText(year_month_day date) {
  return std::to_string(static_cast<unsigned>(date.day()));
}

}  // namespace

int monthNamed(std::string_view name) {
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    if (equalIgnoringCase(name, kMonths[i])) {
      return static_cast<int>(i) + 1;
    }
  }
  return 0;
}

std::optional<Day> makeDay(int year, unsigned month, unsigned day) {
  const year_month_day date{std::chrono::year{year}, std::chrono::month{month},
                            std::chrono::day{day}};
  if (year < 1900 || year > 2099 || !date.ok()) {
    return std::nullopt;
  }
  return Day{date};
}

Day localToday() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  const year_month_day date{std::chrono::year{local.tm_year + 1900},
                            std::chrono::month{static_cast<unsigned>(local.tm_mon + 1)},
                            std::chrono::day{static_cast<unsigned>(local.tm_mday)}};
  return Day{date};
}

std::optional<Day> makeDay(std::string_view year, std::string_view month, std::string_view day) {
  const auto years = parseCount(year);
  const int months = parseCount(month).value_or(monthNamed(month));
  const auto days = parseCount(day);
  // More than two digits would wrap in the calendar's small types.
  if (!years || !days || (year.size() != 4 && year.size() != 2) || months > 12 || *days > 31) {
    return std::nullopt;
  }
  return makeDay(fullYear(*years, year.size()), static_cast<unsigned>(months),
                 static_cast<unsigned>(*days));
}

std::optional<Day> parseDay(std::string_view text) {
  const auto first = text.find('-');
  const auto second = first == text.npos ? text.npos : text.find('-', first + 1);
  if (second == text.npos) {
    return std::nullopt;
  }
  const auto left = text.substr(0, first);
  const auto middle = text.substr(first + 1, second - first - 1);
  const auto right = text.substr(second + 1);
  const bool iso = left.size() == 4;
  if (iso != parseCount(middle).has_value()) {
    return std::nullopt;
  }
  return iso ? makeDay(left, middle, right) : makeDay(right, middle, left);
}

std::string tableDate(Day day) {
  const year_month_day date{day};
  const auto year = std::to_string(100 + yearOf(date) % 100).substr(1);
  const auto month = kMonths.at(static_cast<unsigned>(date.month()) - 1);
  return dayText(date) + "-" + std::string(month) + "-" + year;
}

std::string quoteDate(Day day) {
  const year_month_day date{day};
  return std::to_string(static_cast<unsigned>(date.month())) + "/" + dayText(date) + "/" +
         std::to_string(yearOf(date));
}

bool isWeekend(Day day) { return std::chrono::weekday{day}.iso_encoding() >= 6; }

int weekNumber(Day day) {
  const auto monday = day - (std::chrono::weekday{day} - std::chrono::Monday);
  // 1970-01-05 was a Monday; the division is exact on both sides of it.
  return static_cast<int>((monday.time_since_epoch().count() - 4) / 7);
}

int monthNumber(Day day) {
  const year_month_day date{day};
  return static_cast<int>(date.year()) * 12 + static_cast<int>(static_cast<unsigned>(date.month()));
}

}  // namespace quintara::quotes
