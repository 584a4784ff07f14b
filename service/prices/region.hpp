#pragma once

#include <string>

#include "service/prices/moments.hpp"

namespace quintara::quotes {

/// The order of dates of a locale as the environment names it ("de_DE.UTF-8"): by the C library
/// where it has the locale, otherwise by the country. Unclear for C, POSIX and no name.
DayOrder dayOrderOf(const std::string& locale);

/// The order of the desktop's regional settings: LC_ALL, LC_TIME or LANG, the first that is set.
DayOrder regionalDayOrder();

}  // namespace quintara::quotes
