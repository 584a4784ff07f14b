#pragma once

#include <string>
#include <string_view>

#include "service/prices/calendar.hpp"

namespace quintara::quotes {

/// What 11/05/2026 means. Unclear dates are not guessed.
enum class DayOrder { Unclear, MonthFirst, DayFirst };

/// How a provider writes dates.
struct DayForms {
  DayOrder order = DayOrder::Unclear;
  int utcOffsetHours = 0;  ///< of the exchange; for dates written as seconds since 1970
};

/// Besides the dates of price files: 20261105, 2026/11/05, 5.11.2026, 5 Nov 2026, November 5, 2026,
/// with the right order 11/05/2026 or 05-11-2026, each with a time of day after it, and seconds or
/// milliseconds since 1970.
std::optional<Day> parseAnyDay(std::string_view text, const DayForms& forms);

/// A moment as %Y, %y, %m, %d, %s (seconds since 1970) and %% of the pattern say.
std::string momentText(std::chrono::sys_seconds moment, std::string_view pattern);
bool isMomentPattern(std::string_view pattern);

}  // namespace quintara::quotes
