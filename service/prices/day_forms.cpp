#include "service/prices/day_forms.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

using std::chrono::year_month_day;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

std::optional<Day> dayOfStamp(std::string_view digits, int utcOffsetHours) {
  std::int64_t seconds = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), seconds);
  constexpr std::size_t kMostSeconds = 11;
  if (digits.size() > kMostSeconds) {
    seconds /= 1000;
  }
  const std::chrono::sys_seconds moment{std::chrono::seconds{seconds} +
                                        std::chrono::hours{utcOffsetHours}};
  const year_month_day date{std::chrono::floor<std::chrono::days>(moment)};
  return makeDay(static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                 static_cast<unsigned>(date.day()));
}

// What stands for a number alone: 20261105, or a count of seconds with perhaps decimals.
std::optional<Day> dayOfNumber(std::string_view text, int utcOffsetHours) {
  const auto digits = text.substr(0, text.find('.'));
  if (!isNumber(digits) ||
      !(digits.size() == text.size() || isNumber(text.substr(digits.size() + 1)))) {
    return std::nullopt;
  }
  if (text.size() == 8) {
    return makeDay(text.substr(0, 4), text.substr(4, 2), text.substr(6));
  }
  return digits.size() >= 9 && digits.size() <= 13 ? dayOfStamp(digits, utcOffsetHours)
                                                   : std::nullopt;
}

// The date before the T of an ISO time.
std::string_view withoutIsoTime(std::string_view text) {
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    if (text[i] == 'T' && isDigit(text[i - 1]) && isDigit(text[i + 1])) {
      return text.substr(0, i);
    }
  }
  return text;
}

std::string_view takePart(std::string_view& text, std::string_view separators) {
  const auto end = std::min(text.find_first_of(separators), text.size());
  const auto part = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return part;
}

// "Nov", "November" and "11" as a month's number or its three letters.
std::string_view shortMonth(std::string_view month) {
  return isNumber(month) ? month : month.substr(0, 3);
}

bool isName(std::string_view part) { return monthNamed(shortMonth(part)) != 0; }

}  // namespace

std::optional<Day> parseAnyDay(std::string_view text, const DayForms& forms) {
  if (const auto day = dayOfNumber(text, forms.utcOffsetHours)) {
    return day;
  }
  text = withoutIsoTime(text);
  const bool points = text.find_first_of("-/., ") == text.find('.');
  const auto first = takePart(text, "-/., ");
  const auto second = takePart(text, "-/., ");
  const auto third = takePart(text, ", ");
  if (!text.empty() && !isDigit(text.front())) {
    return std::nullopt;  // not a time of day
  }
  if (first.size() == 4 && isNumber(first)) {
    return makeDay(first, shortMonth(second), third);
  }
  if (isName(first) || isName(second)) {
    return isName(first) ? makeDay(third, shortMonth(first), second)
                         : makeDay(third, shortMonth(second), first);
  }
  // Dates with points are only written day first.
  if (points || forms.order == DayOrder::DayFirst) {
    return makeDay(third, second, first);
  }
  return forms.order == DayOrder::MonthFirst ? makeDay(third, first, second) : std::nullopt;
}

std::string momentText(std::chrono::sys_seconds moment, std::string_view pattern) {
  const year_month_day date{std::chrono::floor<std::chrono::days>(moment)};
  const auto twoDigits = [](unsigned value) { return std::to_string(100 + value % 100).substr(1); };
  const auto year = static_cast<unsigned>(static_cast<int>(date.year()));
  std::string text;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] != '%' || i + 1 == pattern.size()) {
      text += pattern[i];
      continue;
    }
    switch (pattern[++i]) {
      case 'Y':
        text += std::to_string(year);
        break;
      case 'y':
        text += twoDigits(year);
        break;
      case 'm':
        text += twoDigits(static_cast<unsigned>(date.month()));
        break;
      case 'd':
        text += twoDigits(static_cast<unsigned>(date.day()));
        break;
      case 's':
        text += std::to_string(moment.time_since_epoch().count());
        break;
      default:
        text += pattern[i];
        break;
    }
  }
  return text;
}

bool isMomentPattern(std::string_view pattern) {
  bool any = false;
  for (auto at = pattern.find('%'); at != pattern.npos; at = pattern.find('%', at + 2)) {
    if (at + 1 == pattern.size() ||
        std::string_view("Yymds%").find(pattern[at + 1]) == pattern.npos) {
      return false;
    }
    any = any || pattern[at + 1] != '%';
  }
  return any;
}

}  // namespace quintara::quotes
