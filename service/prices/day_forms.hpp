#pragma once

#include <string>
#include <string_view>

#include "service/prices/moments.hpp"

namespace quintara::quotes {

/// How dates are written.
struct DayForms {
  DayOrder order = DayOrder::Unclear;
  int utcOffsetHours = 0;  ///< of the exchange; for dates written as seconds since 1970
};

/// A moment as %Y, %y, %m, %d, %s (seconds since 1970) and %% of the pattern say.
std::string momentText(std::chrono::sys_seconds moment, std::string_view pattern);
bool isMomentPattern(std::string_view pattern);

}  // namespace quintara::quotes
