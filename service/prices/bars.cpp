#include "service/prices/bars.hpp"

#include <algorithm>

namespace quintara::quotes {

void cutAfter(DailyBars& bars, Day last) {
  while (!bars.empty() && bars.back().date > last) {
    bars.pop_back();
  }
}

DailyBars aggregated(const DailyBars& days, Interval interval) {
  if (interval == Interval::Daily) {
    return days;
  }
  const auto period = interval == Interval::Weekly ? weekNumber : monthNumber;
  DailyBars bars;
  for (const DailyBar& day : days) {
    if (bars.empty() || period(bars.back().date) != period(day.date)) {
      bars.push_back(day);
      continue;
    }
    DailyBar& bar = bars.back();
    bar.high = std::max(bar.high, day.high);
    bar.low = std::min(bar.low, day.low);
    bar.close = day.close;
    bar.volume = sumOfVolumes(bar.volume, day.volume);
  }
  return bars;
}

std::string spanText(const DailyBars& days) {
  return std::to_string(days.size()) + (days.size() == 1 ? " day" : " days") + " from " +
         tableDate(days.front().date) + " to " + tableDate(days.back().date);
}

}  // namespace quintara::quotes
