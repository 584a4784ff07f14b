#include "service/prices/region.hpp"

#include <langinfo.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <string_view>

namespace quintara::quotes {
namespace {

using namespace std::string_view_literals;

// Where a locale is not there: countries that write the month first, and languages, or with their
// country, that write the year first. The rest of the world begins with the day.
constexpr std::array kMonthFirst{"US"sv, "PH"sv, "PR"sv, "GU"sv, "AS"sv, "VI"sv,
                                 "MP"sv, "UM"sv, "FM"sv, "MH"sv, "PW"sv, "PA"sv};
constexpr std::array kYearFirst{"ja"sv, "zh"sv, "ko"sv,    "hu"sv,    "lt"sv,   "sv_SE"sv,
                                "mn"sv, "eu"sv, "en_CA"sv, "fr_CA"sv, "en_ZA"sv};

// Where %d, %m and %y stand in a format of the C library.
DayOrder orderIn(std::string_view format) {
  for (auto at = format.find('%'); at != format.npos; at = format.find('%', at + 1)) {
    const auto letter = format.find_first_not_of("-_0EO", at + 1);
    switch (letter != format.npos ? format[letter] : '\0') {
      case 'd':
      case 'e':
        return DayOrder::DayFirst;
      case 'm':
      case 'b':
      case 'B':
      case 'D':
        return DayOrder::MonthFirst;
      case 'Y':
      case 'y':
      case 'F':
        return DayOrder::YearFirst;
      default:
        break;
    }
  }
  return DayOrder::Unclear;
}

DayOrder orderByName(std::string_view name) {
  const auto bare = name.substr(0, name.find_first_of(".@"));
  const auto language = bare.substr(0, bare.find('_'));
  const auto country = bare.substr(std::min(language.size() + 1, bare.size()));
  const auto is = [&](std::string_view other) { return other == bare || other == language; };
  return std::find(kMonthFirst.begin(), kMonthFirst.end(), country) != kMonthFirst.end()
             ? DayOrder::MonthFirst
         : std::any_of(kYearFirst.begin(), kYearFirst.end(), is) ? DayOrder::YearFirst
                                                                 : DayOrder::DayFirst;
}

}  // namespace

DayOrder dayOrderOf(const std::string& locale) {
  const auto bare = locale.substr(0, locale.find('.'));
  if (bare.empty() || bare == "C" || bare == "POSIX") {
    return DayOrder::Unclear;
  }
  const locale_t known = ::newlocale(LC_TIME_MASK, locale.c_str(), nullptr);
  if (known == nullptr) {
    return orderByName(locale);
  }
  const auto order = orderIn(::nl_langinfo_l(D_FMT, known));
  ::freelocale(known);
  return order;
}

DayOrder regionalDayOrder() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') {
      return dayOrderOf(value);
    }
  }
  return DayOrder::Unclear;
}

}  // namespace quintara::quotes
