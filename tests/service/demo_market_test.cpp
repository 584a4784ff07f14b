#include "service/demo_market.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "service/replies.hpp"

namespace quintara::quotes {
namespace {

const Day kToday = *makeDay(2026, 11, 20);

DailyBars barsOf(const char* ticker, Day today) {
  return std::get<DailyBars>(DemoMarket().find(ticker, today));
}

// The lowest and the highest change of the close over `span` bars, in per cent.
std::pair<Price, Price> changes(const DailyBars& bars, std::size_t span) {
  std::pair<Price, Price> result{1000, -1000};
  for (std::size_t i = span; i < bars.size(); ++i) {
    const Price change = bars[i].close * 100 / bars[i - span].close - 100;
    result = {std::min(result.first, change), std::max(result.second, change)};
  }
  return result;
}

// Another machine, compiler or day has to come to the same prices.
TEST(DemoMarket, APriceDependsOnTickerAndDateAlone) {
  std::string rows;
  for (const char* ticker : {"DEMO", "DOWN", "RANGE", "PENNY", "INDEX"}) {
    DailyBars bars = barsOf(ticker, kToday + std::chrono::days{3000});
    EXPECT_LE(bars.front().date, *makeDay(2024, 2, 7));
    std::erase_if(bars, [](const DailyBar& bar) { return bar.date > kToday; });
    EXPECT_EQ(bars.back(), barsOf(ticker, kToday).back());
    rows += tableText(bars, kToday).substr(32);
  }
  EXPECT_EQ(rows,
            "20-Nov-26,85.24,85.27,84.42,84.77,2375500\n"
            "20-Nov-26,2212.93,2218.07,2173.33,2179.23,2990800\n"
            "20-Nov-26,44.07,44.09,43.69,43.81,1295100\n"
            "20-Nov-26,0.2584,0.2691,0.2556,0.2637,27608700\n"
            "20-Nov-26,19999.94,20038.78,19894.06,20009.60,110879400\n");
}

TEST(DemoMarket, EveryTickerKeepsItsCharacterThrough2099) {
  const struct {
    const char* ticker;
    Price lowest, highest;  // of all prices
    Price twoYears[2];      // lowest and highest change, in per cent
  } cases[] = {{"DEMO", 5 * kPriceUnit, 200'000 * kPriceUnit, {1, 60}},
               {"DOWN", kPriceUnit, 25'000 * kPriceUnit, {-40, -1}},
               {"RANGE", 34 * kPriceUnit, 47 * kPriceUnit, {-25, 30}},
               {"PENNY", kPriceUnit / 10, kPriceUnit - 1, {-70, 250}},
               {"INDEX", 10'001 * kPriceUnit, 45'000 * kPriceUnit, {-50, 90}}};
  for (const auto& c : cases) {
    for (int year = 2010; year < 2109;
         year += 9) {  // eleven years each, so that no span is left out
      const DailyBars bars = barsOf(c.ticker, *makeDay(std::min(year, 2099), 12, 31));
      std::size_t rising = 0;
      for (const DailyBar& bar : bars) {
        rising += bar.close > bar.open ? 1 : 0;
        ASSERT_TRUE(c.lowest <= bar.low && bar.low <= std::min(bar.open, bar.close) &&
                    std::max(bar.open, bar.close) <= bar.high && bar.high <= c.highest &&
                    !isWeekend(bar.date) && bar.volume > 0)
            << c.ticker << tableDate(bar.date);
      }
      EXPECT_TRUE(rising > bars.size() * 2 / 5 && rising < bars.size() * 3 / 5) << c.ticker;
      const auto [worst, best] = changes(bars, 522);
      EXPECT_TRUE(c.twoYears[0] <= worst && best <= c.twoYears[1]) << c.ticker << year;
      // Pull-backs in trends and trends in ranges: some quarters fall, some rise.
      const auto [fall, rise] = changes(bars, 65);
      EXPECT_TRUE(fall < -4 && rise > 4) << c.ticker << year;
    }
  }
}

}  // namespace
}  // namespace quintara::quotes
