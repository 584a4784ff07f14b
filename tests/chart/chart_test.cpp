#include <gmock/gmock.h>

#include <memory>
#include <tuple>

#include "chart/draw_chart.hpp"
#include "chart/grid.hpp"
#include "data/initialize_collection.hpp"
#include "support/fakes.hpp"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const Date kMonday = std::chrono::year{2026} / 11 / 16;

/// A chart of bars of which only position and date matter.
ChartState chart(float min, float max, int bars = 12) {
  ChartState state;
  state.iSpacing = 3;
  state.sRows = {"16-Nov-26@1@2@1@2@1"};
  for (int i = 1; i < bars; ++i) state.sRows.emplace_back("14-Nov-26@2@2@1@1@1");
  state.sRows.emplace_back("");
  InitializeCollection(state, kMonday);
  state.sngMin = min;
  state.sngMax = max;
  state.iShown = 2;
  return state;
}

std::unique_ptr<RecordingSurface> grid(ChartState& state, float pricePerPixel = 0.5F) {
  state.sngPricePerPixel = pricePerPixel;
  auto surface = std::make_unique<RecordingSurface>();
  Grid(state, *surface);
  return surface;
}

TEST(Grid, DrawsAxesLinesLabelsAndDates) {
  ChartState state = chart(20, 100);
  const auto surface = grid(state, 1);
  EXPECT_THAT(
      std::vector(surface->calls.begin(), surface->calls.begin() + 5),
      ElementsAre("line 2,-3 2,110 E0E0E0", "line 2,-3 1000,-3 E0E0E0", "line 2,21 4,21 E0E0E0",
                  "line 40,21 1000,21 C0C0C0 dot", "print 20,31 [ 21 ]"));
  EXPECT_THAT(std::vector(surface->calls.end() - 3, surface->calls.end()),
              ElementsAre("line 68,-3 68,2 E0E0E0", "line 68,20 68,100 C0C0C0 dot",
                          "print 82,20 [14-Nov-26]"));
  EXPECT_THAT(surface->with("print"), SizeIs(11)) << "21, 29, ... 93 and one date";
}

TEST(Grid, LabelsByTheSizeOfThePrice) {
  const std::tuple<float, float, const char*> kCases[] = {
      {5, 5.5F, "print 30,10.25 [5,25]"},         {13, 20, "print 20,18.65 [ 14 ]"},
      {100, 200, "print 25,110 [ 105 ]"},         {1000, 2000, "print 32,1055 [ 1050 ]"},
      {20000, 30000, "print 40,21005 [ 21000 ]"},
  };
  const ScopedSeparator comma(",");
  for (const auto& [min, max, first] : kCases) {
    ChartState state = chart(min, max, 3);
    EXPECT_EQ(grid(state)->with("print").front(), first);
  }
  ChartState state = chart(8000, 16000, 3);  // steps of 800 from 8400
  const auto surface = grid(state);
  EXPECT_THAT(surface->calls, Contains("line 2,10000 4,10000 E0E0E0"));
  EXPECT_THAT(surface->with("print", "[ 10000 ]"), IsEmpty()) << "exactly 10000 has no label";
}

TEST(Grid, EndsForEveryRange) {
  const std::tuple<const char*, float, float, std::size_t, bool> kCases[] = {
      {"narrow: no line below the top", 100, 104, 0, true},
      {"empty above 0", 50, 50, 0, true},
      {"empty at 0", 0, 0, 0, false},
      {"empty below 0", -5, -5, 0, false},
      {"nothing scanned: the range is upside down", 2000000, 0, 11, true},
      {"a step lost in the price's precision", -16777216, -16777214, 1, true},
  };
  for (const auto& [what, min, max, ticks, dates] : kCases) {
    ChartState state = chart(min, max);
    const auto surface = grid(state, 0);
    EXPECT_EQ(surface->with("line 2,").size(), 2 + ticks) << what;
    EXPECT_EQ(surface->with("line 68,").size(), dates ? 2U : 0U) << what;
  }
  ChartState state = chart(0, 3e38F);
  EXPECT_THROW(grid(state, 1e37F), RuntimeError) << "a step beyond single range";
}

TEST(Grid, SpacesDatesByTheSpacing) {
  ChartState state = chart(100, 104, 80);
  EXPECT_THAT(grid(state)->with("print"), SizeIs(3)) << "bars 10, 40, 70";
  state.bSuppressed = true;
  EXPECT_THAT(grid(state)->with("print"), SizeIs(2)) << "bars 10, 70";
}

/// Two bars at 40 and 43: one rising from 1 to 2, one falling from 2 to 1.
std::vector<std::string> bars(std::int16_t type) {
  ChartState state = chart(100, 104, 4);
  state.iChartType = type;
  RecordingSurface surface;
  DrawChart(state, surface);
  EXPECT_FALSE(state.bDrawing);
  return surface.with("", "00FF00");
}

TEST(Bars, AreDrawnInTheChosenType) {
  EXPECT_THAT(bars(0), ElementsAre("box 40,2 42,1 00FF00", "line 41,2 41,2 00FF00",
                                   "line 41,1 41,1 00FF00", "fill 43,2 45,1 00FF00",
                                   "line 44,2 44,2 00FF00", "line 44,1 44,1 00FF00"));
  EXPECT_THAT(bars(1), ElementsAre("line 40,2 43,1 00FF00"));
  EXPECT_THAT(bars(2), ElementsAre("line 40,2 40,1 00FF00", "line 40,1 42,1 00FF00",
                                   "line 40,2 38,2 00FF00", "line 43,2 43,1 00FF00",
                                   "line 43,2 45,2 00FF00", "line 43,1 41,1 00FF00"));
  EXPECT_THAT(bars(7), IsEmpty());
}

TEST(DrawChart, ScalesPixelsLeftwardsAndPricesUpwards) {
  for (const auto& [width, scale] :
       {std::pair{401.0F, "scale 401,160.1 0,97.5"}, {500.0F, "scale 500,160.1 0,97.5"}}) {
    ChartState state = chart(100, 151.1F);
    RecordingSurface surface;
    surface.pixelWidth = width;
    DrawChart(state, surface);
    EXPECT_EQ(surface.calls[0], "cls");
    EXPECT_EQ(surface.calls[1], scale);
    EXPECT_FLOAT_EQ(state.sngPricePerPixel, 0.1F);
  }
}

TEST(DrawChart, LeavesItsFlagSetWhenItFails) {
  ChartState state = chart(100, 151);
  RecordingSurface surface;
  surface.pixelHeight = 0;
  EXPECT_THROW(DrawChart(state, surface), RuntimeError);
  EXPECT_TRUE(state.bDrawing);
  surface.calls.clear();
  state.sRows.resize(3);
  DrawChart(state, surface);
  EXPECT_THAT(surface.calls, IsEmpty()) << "three rows are no chart";
}

}  // namespace
}  // namespace quintara::test
