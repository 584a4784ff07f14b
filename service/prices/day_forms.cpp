#include "service/prices/day_forms.hpp"

namespace quintara::quotes {

using std::chrono::year_month_day;

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
