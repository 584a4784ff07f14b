#include <gmock/gmock.h>

#include <tuple>

#include "chart/draw_chart.hpp"
#include "chart/grid.hpp"
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
  const auto calls = Chart(20, 100).grid(1).calls;
  EXPECT_THAT(
      std::vector(calls.begin(), calls.begin() + 5),
      ElementsAre("line 2,-3 2,110 E0E0E0", "line 2,-3 1000,-3 E0E0E0", "line 2,21 4,21 E0E0E0",
                  "line 40,21 1000,21 C0C0C0 dot", "print 20,31 [ 21 ]"));
  EXPECT_THAT(std::vector(calls.end() - 3, calls.end()),
              ElementsAre("line 68,-3 68,2 E0E0E0", "line 68,20 68,100 C0C0C0 dot",
                          "print 82,20 [14-Nov-26]"));
  EXPECT_THAT(calls, SizeIs(2 + 10 * 3 + 3)) << "21, 29, ... 93 and one date";
}

TEST(Grid, LabelsByTheSizeOfThePrice) {
  const std::tuple<float, float, const char*> kCases[] = {
      {5, 5.5F, "print 30,10.25 [5,25]"},         {13, 20, "print 20,18.65 [ 14 ]"},
      {100, 200, "print 25,110 [ 105 ]"},         {1000, 2000, "print 32,1055 [ 1050 ]"},
      {20000, 30000, "print 40,21005 [ 21000 ]"},
  };
  const ScopedSeparator comma(",");
  for (const auto& [min, max, first] : kCases)
    EXPECT_EQ(Chart(min, max, 3).grid().with("print").front(), first);
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
      {"nothing scanned: the range is upside down", 2000000, 0, 11, 2},
      {"a step lost in the price's precision", -16777216, -16777214, 1, 2},
  };
  for (const auto& [what, min, max, ticks, dateLines] : kCases) {
    Chart chart(min, max);
    EXPECT_EQ(chart.grid(0).with("line 2,").size(), 2 + ticks) << what;
    EXPECT_EQ(chart.with("line 68,").size(), dateLines) << what;
  }
  EXPECT_THROW(Chart(0, 3e38F).grid(1e37F), RuntimeError) << "a step beyond single range";
}

TEST(Grid, SpacesDatesByTheSpacing) {
  Chart chart(100, 104, 80);
  EXPECT_THAT(chart.grid().with("print"), SizeIs(3)) << "bars 10, 40, 70";
  chart.state.bSuppressed = true;
  EXPECT_THAT(chart.grid().with("print"), SizeIs(3 + 2)) << "bars 10, 70";
}

TEST(DrawChart, DrawsBarsOfTheChosenType) {
  Chart chart(100, 104, 4);
  EXPECT_THAT(chart.bars(0), ElementsAre("box 40,2 42,1 00FF00", "line 41,2 41,2 00FF00",
                                         "line 41,1 41,1 00FF00", "fill 43,2 45,1 00FF00",
                                         "line 44,2 44,2 00FF00", "line 44,1 44,1 00FF00"));
  EXPECT_THAT(chart.bars(1), ElementsAre("line 40,2 43,1 00FF00"));
  EXPECT_THAT(chart.bars(2), ElementsAre("line 40,2 40,1 00FF00", "line 40,1 42,1 00FF00",
                                         "line 40,2 38,2 00FF00", "line 43,2 43,1 00FF00",
                                         "line 43,2 45,2 00FF00", "line 43,1 41,1 00FF00"));
  EXPECT_THAT(chart.bars(7), IsEmpty());
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
}

TEST(DrawChart, LeavesItsFlagSetWhenItFails) {
  Chart chart(100, 151);
  chart.pixelHeight = 0;
  EXPECT_THROW(chart.bars(0), RuntimeError);
  EXPECT_TRUE(chart.state.bDrawing);
  chart.calls.clear();
  chart.state.sRows.resize(3);
  DrawChart(chart.state, chart);
  EXPECT_THAT(chart.calls, IsEmpty()) << "three rows are no chart";
}

}  // namespace
}  // namespace quintara::test
