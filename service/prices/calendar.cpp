#include "service/prices/calendar.hpp"

#include <array>
#include <ctime>

namespace quintara::quotes {
namespace {

using std::chrono::year_month_day;

constexpr auto kMonths = std::to_array<std::string_view>(
    {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"});

unsigned yearOf(year_month_day date) {
  return static_cast<unsigned>(static_cast<int>(date.year()));
}

std::string dayText(year_month_day date) {
  return std::to_string(static_cast<unsigned>(date.day()));
}

}  // namespace

std::optional<Day> makeDay(int year, unsigned month, unsigned day) {
  const year_month_day date{std::chrono::year{year}, std::chrono::month{month},
                            std::chrono::day{day}};
  // The types of the calendar keep no more than a byte of a month and of a day.
  if (year < 1900 || year > 2099 || month > 12 || day > 31 || !date.ok()) {
    return std::nullopt;
  }
  return Day{date};
}

Day localToday() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return std::chrono::floor<std::chrono::days>(std::chrono::system_clock::from_time_t(now) +
                                               std::chrono::seconds{local.tm_gmtoff});
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
