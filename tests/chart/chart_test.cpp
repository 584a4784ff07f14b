#include <gmock/gmock.h>

#include <tuple>

#include "chart/draw_chart.hpp"
#include "chart/grid.hpp"
#include "chart/pointer_stops.hpp"
#include "chart/summary.hpp"
#include "data/initialize_collection.hpp"
#include "support/fakes.hpp"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A chart of bars of which only position and date matter, and what is drawn of it.
struct Chart : RecordingSurface {
  Chart(float min, float max, int bars = 12) {
    state.iSpacing = 3;
    state.sRows = {"16-Nov-26@1@2@1@2@1"};
    for (int i = 1; i < bars; ++i) state.sRows.emplace_back("14-Nov-26@2@2@1@1@1");
    state.sRows.emplace_back("");
    InitializeCollection(state, std::chrono::year{2026} / 11 / 16);
    state.sngMin = min;
    state.sngMax = max;
    state.iShown = 2;
  }
  const Chart& grid(float pricePerPixel = 0.5F) {
    state.sngPricePerPixel = pricePerPixel;
    Grid(state, *this);
    return *this;
  }
  /// The two bars at 40 and 43: one rising from 1 to 2, one falling from 2 to 1.
  std::vector<std::string> bars(std::int16_t type) {
    state.iChartType = type;
    calls.clear();
    DrawChart(state, *this);
    EXPECT_FALSE(state.bDrawing);
    return with("", "00FF00");
  }
  ChartState state;
};

TEST(Grid, DrawsAxesLinesLabelsAndDates) {
  const auto calls = Chart(20, 100).grid(0.5F).calls;
  EXPECT_THAT(
      std::vector(calls.begin(), calls.begin() + 5),
      ElementsAre("line 2,8.5 2,110 E0E0E0", "line 2,8.5 1000,8.5 E0E0E0", "line 2,21 4,21 E0E0E0",
                  "line 40,21 1000,21 C0C0C0 dot", "print 20,26 [ 21 ]"));
  EXPECT_THAT(std::vector(calls.end() - 3, calls.end()),
              ElementsAre("line 68,8.5 68,11 E0E0E0", "line 68,20 68,100 C0C0C0 dot",
                          "print 82,20 [14-Nov-26]"));
  EXPECT_THAT(calls, SizeIs(2 + 10 * 3 + 3)) << "21, 29, ... 93 and one date";
}

TEST(Grid, LabelsByTheSizeOfThePrice) {
  const std::tuple<float, float, const char*> kCases[] = {
      {5.25F, 30, "[5,25]"},  {9.99F, 30, "[9,99]"},   {10, 20, "[ 10 ]"},   {13.5F, 20, "[ 14 ]"},
      {99, 20, "[ 99 ]"},     {100, 25, "[ 100 ]"},    {999, 25, "[ 999 ]"}, {1000, 32, "[ 1000 ]"},
      {9999, 32, "[ 9999 ]"}, {10001, 40, "[ 10001 ]"}};
  const ScopedSeparator comma(",");
  for (const auto& [price, x, text] : kCases)  // the lowest line stands 5 % above the range
    EXPECT_EQ(Chart(static_cast<float>(price / 1.05), price * 2, 3).grid().with("print").front(),
              "print " + Chart::point(x, price + 5) + ' ' + text);
  Chart chart(8000, 16000, 3);  // steps of 800 from 8400
  EXPECT_THAT(chart.grid().with("line 2,10000 4,10000"), SizeIs(1));
  EXPECT_THAT(chart.with("print", "[ 10000 ]"), IsEmpty()) << "exactly 10000 has no label";
}

TEST(Grid, EndsForEveryRange) {
  const std::tuple<const char*, float, float, std::size_t, std::size_t> kCases[] = {
      {"narrow: no line below the top", 100, 104, 0, 2},
      {"empty above 0", 50, 50, 0, 2},
      {"empty at 0", 0, 0, 0, 0},
      {"empty below 0", -5, -5, 0, 0},
      {"a line at the very top", 0, 100, 11, 2},
      {"nothing scanned: the range is upside down", 2000000, 0, 11, 2},
      {"a line at the end upside down", 20, 10, 12, 2},
      {"a step lost in the price's precision", -16777216, -16777214, 1, 2},
  };
  for (const auto& [what, min, max, ticks, dateLines] : kCases) {
    Chart chart(min, max);
    EXPECT_EQ(chart.grid(0).with("line 2,").size(), 2 + ticks) << what;
    EXPECT_EQ(chart.with("line 68,").size(), dateLines) << what;
  }
  EXPECT_THROW(Chart(0, 3e38F).grid(1e37F), RuntimeError) << "a step beyond single range";
  EXPECT_LT(Chart(-1e6F, -999999).grid(0).calls.size(), 5000U) << "endless before they are seen";
}

TEST(Grid, SpacesDatesByTheSpacing) {
  Chart chart(100, 104, 70);
  const std::vector<std::string> dates{"print 82,100 [14-Nov-26]", "print 172,100 [14-Nov-26]",
                                       "print 262,100 [14-Nov-26]"};
  EXPECT_EQ(chart.grid().with("print"), dates) << "bars 10, 40, 70";
  chart.state.bSuppressed = true;
  chart.calls.clear();
  EXPECT_THAT(chart.grid().with("print"), ElementsAre(dates[0], dates[2]));
}

TEST(DrawChart, DrawsBarsOfTheChosenType) {
  Chart chart(100, 104, 3);
  EXPECT_THAT(chart.bars(0), ElementsAre("box 40,2 42,1 00FF00", "line 41,2 41,2 00FF00",
                                         "line 41,1 41,1 00FF00", "fill 43,2 45,1 00FF00",
                                         "line 44,2 44,2 00FF00", "line 44,1 44,1 00FF00"));
  EXPECT_THAT(chart.bars(1), ElementsAre("line 40,2 43,1 00FF00"));
  EXPECT_THAT(chart.bars(2), ElementsAre("line 40,2 40,1 00FF00", "line 40,1 42,1 00FF00",
                                         "line 40,2 38,2 00FF00", "line 43,2 43,1 00FF00",
                                         "line 43,2 45,2 00FF00", "line 43,1 41,1 00FF00"));
  EXPECT_THAT(chart.bars(7), IsEmpty());
  Candle doji;
  doji.Draw(chart);
  EXPECT_EQ(chart.calls.end()[-3], "box 0,0 2,0 00FF00") << "closed where it opened: hollow";
}

TEST(DrawChart, ScalesPixelsLeftwardsAndPricesUpwards) {
  Chart chart(100, 151.1F);
  for (const float width : {401.0F, 500.0F}) {
    chart.pixelWidth = width;
    chart.bars(0);
    EXPECT_EQ(chart.calls[0], "cls");
    EXPECT_EQ(chart.calls[1], "scale " + Chart::point(width, 160.1F) + " 0,97.5");
    EXPECT_FLOAT_EQ(chart.state.sngPricePerPixel, 0.1F);
  }
  chart.state.sngPricePerPixel = 0.5F;  // 45 above the range, 12.5 below
  const std::pair<float, bool> kPrices[] = {
      {196.1F, true}, {196.2F, false}, {120, true}, {87.5F, true}, {87.4F, false}};
  for (const auto& [price, inside] : kPrices)
    EXPECT_EQ(isOnChart(chart.state, price), inside) << price;
}

TEST(Summary, SaysWhatIsShown) {
  Chart chart(1, 2, 3);
  chart.state.sDrawnTicker = "XYZ";
  const std::pair<std::int16_t, const char*> kCases[] = {
      {0, "XYZ: 0 bars shown, prices"},
      {1, "XYZ: 1 bars shown, 16-Nov-26 to 16-Nov-26, prices"},
      {2, "XYZ: 2 bars shown, 14-Nov-26 to 16-Nov-26, prices"}};
  for (const auto& [shown, said] : kCases) {
    chart.state.iShown = shown;
    EXPECT_EQ(chartSummary(chart.state), std::string(said) + " 0 to 0, newest close 2");
  }
  chart.state.colCandles.emplace();
  EXPECT_EQ(chartSummary(chart.state), "No bars");
}

TEST(PointerStops, StandOnTheBarsDrawnInTheirOrder) {
  Chart chart(100, 104, 6);
  chart.state.iShown = 5;
  const auto line = chart.bars(1);
  const auto stops = pointerStops(chart.state);
  ASSERT_EQ(stops.size(), line.size() + 1);
  for (std::size_t i = 0; i < line.size(); ++i)
    EXPECT_EQ(line[i], "line " + Chart::point(stops[i].X, stops[i].Y) + ' ' +
                           Chart::point(stops[i + 1].X, stops[i + 1].Y) + " 00FF00");
  chart.state.colCandles.emplace().Add({});  // a bad row ended the series
  EXPECT_THAT(pointerStops(chart.state), SizeIs(1));
  chart.state.colCandles.reset();
  EXPECT_THAT(pointerStops(chart.state), IsEmpty());
  EXPECT_THAT(pointerStops({}), IsEmpty());
}

TEST(DrawChart, LeavesItsFlagSetWhenItFails) {
  Chart chart(100, 151);
  chart.pixelHeight = 0;
  EXPECT_THAT([&] { chart.bars(0); }, testing::Throws<RuntimeError>(testing::Property(
                                          &RuntimeError::kind, ErrorKind::DivisionByZero)));
  EXPECT_TRUE(chart.state.bDrawing);
  chart.calls.clear();
  chart.state.sRows.resize(3);
  DrawChart(chart.state, chart);
  EXPECT_THAT(chart.calls, IsEmpty()) << "three rows are no chart";
}

}  // namespace
}  // namespace quintara::test
