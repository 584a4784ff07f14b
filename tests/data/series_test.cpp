#include <gmock/gmock.h>

#include <tuple>

#include "chart/price_range.hpp"
#include "chart/shown_bars.hpp"
#include "data/initialize_collection.hpp"
#include "data/rows.hpp"
#include "support/fakes.hpp"

namespace quintara::test {
namespace {

const Date kMonday = std::chrono::year{2026} / 11 / 16;
const Date kSaturday = std::chrono::year{2026} / 11 / 14;
const Date kSunday = std::chrono::year{2026} / 11 / 15;
const char* const kQuote = "16-Nov-26@60@70@55@61@5\r\n";

ChartState loaded(std::vector<std::string> rows) {
  ChartState state;
  state.sRows = std::move(rows);
  state.iSpacing = 3;
  return state;
}

TEST(State, StartsAtZeroEmptyOrNothing) {
  const auto& [open, high, low, close, left, volume, date, fifty, twoHundred, line, signal, os,
               fastD, slowD] = Candle();
  EXPECT_THAT((std::array{open, high, low, close, left, static_cast<float>(volume), fifty,
                          twoHundred, line, signal, os, fastD, slowD}),
              testing::Each(0));
  const ChartState s;
  EXPECT_THAT((std::array{s.iDuration, s.iInterval, s.iChartType, s.iSpacing, s.iShown}),
              testing::Each(0));
  EXPECT_THAT(
      (std::array{s.sngLeft, s.sngMax, s.sngMin, s.sngShownMax, s.sngShownMin, s.sngPricePerPixel}),
      testing::Each(0));
  EXPECT_FALSE(s.bSuppressed || s.bDrawing || s.bBusy || s.colCandles || !s.sRows.empty());
  EXPECT_EQ(s.sTicker + s.sDrawnTicker + date, "");
}

TEST(Series, CountsTheQuoteOnlyAsAWholeDailyWorkingDay) {
  const char* const noOpen = "16-Nov-26@N/A@70@55@61@5";
  const char* const noVolume = "16-Nov-26@60@70@55@61@N/A";
  const std::tuple<const char*, Date, std::int16_t, std::size_t> kCases[] = {
      {kQuote, kMonday, 0, 2},  {kQuote, kSaturday, 0, 1}, {kQuote, kSunday, 0, 1},
      {kQuote, kMonday, 1, 1},  {kQuote, kMonday, 2, 1},   {noOpen, kMonday, 0, 1},
      {noVolume, kMonday, 0, 1}};
  for (const auto& [quote, today, interval, bars] : kCases) {
    ChartState state = loaded({quote, "14-Nov-26@1@2@0.5@1.5@9@1.4", ""});
    state.iInterval = interval;
    InitializeCollection(state, today);
    EXPECT_EQ(state.candles().Count(), bars) << quote << ' ' << interval;
  }
}

TEST(Series, HoldsRowsNewestFirstInSinglePrecision) {
  ChartState state = loaded({kQuote, "14-Nov-02@12.5@12.6@12.3@12.55@123456789@more", "not used"});
  InitializeCollection(state, kMonday);
  const Candle& older = state.candles().Item(2);
  EXPECT_EQ(older.sDate, "14-Nov-02");
  EXPECT_EQ(std::tuple(older.dOpen, older.dHigh, older.dLow, older.dClose, older.dVolume),
            std::tuple(12.5F, 12.6F, 12.3F, 12.55F, 123456792.0));
  EXPECT_EQ(std::tuple(state.candles().Item(1).Left, older.Left, state.sngLeft),
            std::tuple(40, 43, 46));
}

TEST(Series, KeepsTheBarsBeforeABadRow) {
  const std::pair<const char*, ErrorKind> kCases[] = {
      {"14-Nov-02@1@2@3@4", ErrorKind::SubscriptOutOfRange},
      {"", ErrorKind::SubscriptOutOfRange},
      {"14-Nov-02@1@2@3@-@5", ErrorKind::TypeMismatch},
      {"14-Nov-02@1@2@3@4@1e39", ErrorKind::Overflow},
  };
  for (const auto& [row, kind] : kCases) {
    ChartState state = loaded({kQuote, row, "14-Nov-02@1@2@3@4@5", ""});
    EXPECT_THAT([&] { InitializeCollection(state, kMonday); },
                testing::Throws<RuntimeError>(testing::Property(&RuntimeError::kind, kind)));
    EXPECT_EQ(state.candles().Count(), 1U);
    EXPECT_EQ(state.sngLeft, 43);
  }
}

TEST(PriceRange, ScansRowsUpToTheShownIndex) {
  const std::vector<std::string> rows{kQuote, "d@1@71@50@1@1", "d@1@75@49@1@1", "d@1@99@1@1@1", ""};
  // On a working day one bar more than is drawn.
  const std::tuple<Date, std::int16_t, float, float> kCases[] = {
      {kMonday, 2, 75, 49}, {kMonday, 1, 71, 50}, {kSunday, 2, 75, 49}, {kSunday, 0, 0, 2000000}};
  ChartState state = loaded(rows);
  for (const auto& [today, shown, max, min] : kCases) {
    state.iShown = shown;
    MaxMin(state, today);
    EXPECT_EQ(std::pair(state.sngShownMax, state.sngShownMin), std::pair(max, min)) << shown;
  }
}

TEST(PriceRange, StopsAtABadRowAndLeavesTheCopy) {
  const ScopedSeparator comma(",");
  ChartState state = loaded({"q@1@12,5@10,5@1@1", "d@1@x@9@1@1", ""});
  state.iShown = 1;
  EXPECT_THROW(MaxMin(state, kMonday), RuntimeError);
  EXPECT_EQ(state.sngMax, 12.5F);
  EXPECT_EQ(state.sngShownMax, 0);
  state = loaded({"q@1@12,5@10,5@1@1"});
  state.iShown = 1;
  EXPECT_THROW(MaxMin(state, kMonday), RuntimeError) << "there is no such row";
}

TEST(ShownBars, AreRoundedHalfToEvenAndLeaveTheOldestOut) {
  const std::tuple<float, std::int16_t, std::size_t, std::int16_t> kCases[] = {
      {700, 3, 1000, 233}, {700, 3, 120, 119}, {-465, 2, 1000, 232},
      {467, 2, 1000, 234}, {250, 4, 1000, 62}, {254, 4, 1000, 64},
      {1, 3, 1000, 0},     {600, 1, 100, 99},  {600, 1, 0, -1},
  };
  for (const auto& [width, spacing, count, shown] : kCases)
    EXPECT_EQ(withinSeries(barsThatFit(width, spacing), count), shown) << width;
  EXPECT_THROW(barsThatFit(40000, 1), RuntimeError);
}

}  // namespace
}  // namespace quintara::test
