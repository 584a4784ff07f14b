#include "service/demo_market.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "service/replies.hpp"

namespace quintara::quotes {
namespace {

DailyBars barsOf(const char* ticker, Day today) {
  return std::get<DailyBars>(DemoMarket().find(ticker, today));
}

// Another machine, compiler or day has to come to the same prices.
TEST(DemoMarket, APriceDependsOnTickerAndDateAlone) {
  const Day today = *makeDay(2026, 11, 20);
  std::string rows;
  for (const char* ticker : {"DEMO", "DOWN", "RANGE", "PENNY", "INDEX"}) {
    DailyBars bars = barsOf(ticker, today + std::chrono::days{3000});
    EXPECT_LE(bars.front().date, *makeDay(2024, 2, 7));
    std::erase_if(bars, [today](const DailyBar& bar) { return bar.date > today; });
    EXPECT_EQ(bars.back(), barsOf(ticker, today).back());
    rows += tableText(bars, today).substr(32);
  }
  EXPECT_EQ(rows,
            "20-Nov-26,85.24,85.27,84.42,84.77,2375500\n"
            "20-Nov-26,2212.93,2218.07,2173.33,2179.23,2990800\n"
            "20-Nov-26,44.07,44.09,43.69,43.81,1295100\n"
            "20-Nov-26,0.2584,0.2691,0.2556,0.2637,27608700\n"
            "20-Nov-26,19999.94,20038.78,19894.06,20009.60,110879400\n");
}

TEST(DemoMarket, EveryTickerKeepsItsCharacterThrough2099) {
  // The trend of any two years, and the lowest and the highest price in cents.
  using Character = std::tuple<const char*, int, Price, Price>;
  for (const auto& [ticker, trend, lowest, highest] :
       {Character{"DEMO", 1, 500, 20'000'000}, Character{"DOWN", -1, 100, 2'500'000},
        Character{"RANGE", 0, 3'400, 4'700}, Character{"PENNY", 0, 10, 99},
        Character{"INDEX", 0, 1'000'100, 4'500'000}}) {
    for (int year = 2010; year < 2109; year += 9) {  // of eleven each: no two years are left out
      const DailyBars bars = barsOf(ticker, *makeDay(std::min(year, 2099), 12, 31));
      for (std::size_t i = 0; i < bars.size(); ++i) {
        const auto& [date, open, high, low, close, volume] = bars[i];
        ASSERT_TRUE(lowest * 100 <= low && low <= std::min(open, close) &&
                    std::max(open, close) <= high && high <= highest * 100 && volume > 0)
            << ticker << tableDate(date);
        ASSERT_GE(i < 522 ? 0 : (close - bars[i - 522].close) * trend, 0) << ticker << year;
      }
    }
  }
}

}  // namespace
}  // namespace quintara::quotes
