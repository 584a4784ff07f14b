#include "service/sources/demo_market.hpp"

#include <algorithm>
#include <array>

#include "service/sources/demo_walk.hpp"

namespace quintara::quotes {
namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr Day kFirst = sys_days{std::chrono::year{2000} / 1 / 3};
constexpr Day kLast = sys_days{std::chrono::year{2099} / 12 / 31};
constexpr days kOffered{11 * 366};

// The trend of two years is larger than twice what waves and chance can take away together, which
// is what makes every two-year chart of DEMO rise and every one of DOWN fall.
constexpr auto kCharacters = std::to_array<Character>({
    {"DEMO", 0x51a7, 11'002'100, 100'000, 28'000, 113, 17'000, 42'000, 1'800'000},
    {"DOWN", 0x7c03, 19'113'828, -80'000, 25'000, 127, 18'000, 40'000, 2'600'000},
    {"RANGE", 0x2b99, 12'899'220, 0, 55'000, 89, 17'000, 45'000, 900'000},
    {"PENNY", 0x66d1, 8'160'518, 0, 160'000, 211, 60'000, 260'000, 14'000'000},
    {"INDEX", 0x1f5e, 19'296'148, 0, 170'000, 683, 16'000, 120'000, 120'000'000},
});

DailyBars walk(const Character& character, Day first, Day last) {
  DailyBars bars;
  DemoWalk market(character);
  for (Day day = kFirst; day <= last; day += days{1}) {
    if (isWeekend(day)) {
      continue;
    }
    if (day < first) {
      market.skip();
      continue;
    }
    bars.push_back(market.next());
    bars.back().date = day;
  }
  return bars;
}

}  // namespace

Found DemoMarket::find(const std::string& ticker, Day today) {
  const auto* character = std::find_if(kCharacters.begin(), kCharacters.end(),
                                       [&](const Character& c) { return c.ticker == ticker; });
  if (character == kCharacters.end()) {
    return NotFound{};
  }
  DailyBars bars = walk(*character, today - kOffered, std::min(today, kLast));
  return bars.empty() ? Found(NotFound{}) : Found(std::move(bars));
}

}  // namespace quintara::quotes
