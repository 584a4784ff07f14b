#include <gmock/gmock.h>

#include <tuple>

#include "levels/calculate.hpp"
#include "levels/level_lines.hpp"
#include "support/fakes.hpp"
#include "support/recording_surface.hpp"

namespace quintara::test {
namespace {

using testing::ElementsAre;

TEST(Levels, FollowTheirFormulas) {
  const std::tuple<float, float, float, std::array<float, 3>, std::array<float, 3>> kCases[] = {
      {23.17F, 31.45F, 27.80F, {28.287F, 27.31F, 26.333F}, {36.08F, 39.243F, 41.197F}},
      {150, 100, 120, {119.1F, 125, 130.9F}, {70, 50.9F, 39.1F}},
      {25, 25, 20, {25, 25, 25}, {20, 20, 20}},
      {1, 0.999F, 0.0005F, {0.999F, 1, 1}, {0, -0.001F, -0.001F}},  // halves to even, no minus zero
  };
  for (const auto& [A, B, C, retracements, targets] : kCases) {
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(retracement(A, B, i), retracements[i]) << A << ' ' << i;
      EXPECT_EQ(target(A, B, C, i), targets[i]) << A << ' ' << i;
    }
  }
  // The plain move loses what single precision loses, the multiples do not.
  EXPECT_EQ(target(0.1F, 16777216, 1.5F, 0), 16777218.0F);
  EXPECT_THROW(target(1, 3e38F, 3e38F, 0), RuntimeError);
  EXPECT_THROW(target(1, 3e38F, 1, 2), RuntimeError);
}

/// The calculator's controls, without a window.
struct Calculator : testing::Test {
  Calculator() {
    for (std::size_t i = 0; i < kPointBoxes; ++i) boxes[i] = &texts[i];
    for (std::size_t s = 0; s < kSets; ++s) {
      sets[s].chkShow = &shows[s];
      sets[s].retracementRow = s < 2 ? s : s + 2;
      sets[s].targetRow = s < 2 ? s + 2 : s + 4;
      for (std::size_t i = 0; i < 3; ++i) {
        sets[s].chkTargets[i] = &targetBoxes[s * 3 + i];
        sets[s].lblRetracements[i] = &labels[s * 6 + i];
        sets[s].lblTargets[i] = &labels[s * 6 + 3 + i];
        labels[s * 6 + i].foreColor = {static_cast<std::uint32_t>(s + 1)};
      }
    }
  }
  void type(std::initializer_list<const char*> values) {
    std::size_t i = 0;
    for (const char* value : values) texts[i++].text = value;
  }
  void calculate() { cmdCalculate_Click(state, levels, boxes, sets); }

  std::array<FakeTextBox, kPointBoxes> texts;
  std::array<FakeCheckBox, kSets> shows;
  std::array<FakeCheckBox, 12> targetBoxes;
  std::array<FakeLabel, 24> labels;
  PointBoxes boxes{};
  PointSets sets{};
  LevelTable levels{};
  ChartState state;
};

TEST_F(Calculator, FillsOnlySetsWhosePointsAreGiven) {
  // The order of the boxes: A1, A2, A3, A4, B1, B2, C1, C2.
  type({"23.17", "", "150", "-5", "31.45", "100", "", "120"});
  calculate();
  EXPECT_EQ(labels[0].caption, "28.287");
  EXPECT_EQ(labels[3].caption, "") << "A1 has no C1";
  EXPECT_EQ(labels[6].caption, "") << "A2 is empty";
  EXPECT_EQ(labels[14].caption, "130.9");
  EXPECT_EQ(labels[16].caption, "50.9");
  EXPECT_EQ(labels[18].caption, "") << "A4 is negative";
  EXPECT_EQ(levels[4][2], 130.9F);
  type({"", "", "", "", "", "", "", ""});
  calculate();
  EXPECT_EQ(labels[0].caption, "28.287") << "nothing is ever cleared here";
}

TEST_F(Calculator, StretchesTheRangeForTheMiddleTargetOfA1ToA3Only) {
  const struct {
    std::initializer_list<const char*> points;
    float max, min;
  } kCases[] = {
      {{"23.17", "", "", "", "31.45", "", "27.80", ""}, 40.42029F, 30},
      {{"", "23.17", "", "", "31.45", "", "27.80", ""}, 40.42029F, 30},
      {{"", "", "40", "", "", "30", "", "35"}, 38, 20.5446F},
      {{"", "", "", "40", "", "30", "", "35"}, 38, 30},
  };
  for (const auto& [points, max, min] : kCases) {
    state.sngMax = 38;
    state.sngMin = 30;
    type(points);
    calculate();
    EXPECT_FLOAT_EQ(state.sngMax, max);
    EXPECT_FLOAT_EQ(state.sngMin, min);
  }
}

TEST_F(Calculator, KeepsWhatWasFilledBeforeAnOverflow) {
  type({"1", "", "", "", "3e38", "", "3e38", ""});
  EXPECT_THROW(calculate(), RuntimeError);
  EXPECT_NE(labels[2].caption, "") << "retracements come first";
  EXPECT_EQ(labels[3].caption, "");
  labels[0].caption = "old";
  type({"1", "", "", "", "5", "1e39", "", ""});
  EXPECT_THROW(calculate(), RuntimeError);
  EXPECT_EQ(labels[0].caption, "old") << "a box beyond single range fails when it is read";
}

TEST_F(Calculator, WidensTheRangeToTickedTargetsOfShownSets) {
  const std::tuple<const char*, std::int16_t, std::int16_t, const char*, const char*, float, float>
      kCases[] = {
          {"above", 1, 1, ".", "41.197", 41.197F, 20},
          {"below", 1, 1, ".", "14.657", 38, 14.657F},
          {"not shown", 0, 1, ".", "41.197", 38, 20},
          {"not ticked", 1, 0, ".", "41.197", 38, 20},
          {"indeterminate", 1, 2, ".", "41.197", 38, 20},
          {"empty", 1, 1, ".", "", 38, 20},
          {"negative", 1, 1, ".", "-3", 38, 20},
          {"equal", 1, 1, ".", "38", 38, 20},
          {"comma reads whole", 1, 1, ",", "39,243", 39, 20},
      };
  for (const auto& [what, show, box, separator, caption, max, min] : kCases) {
    const ScopedSeparator scoped(separator);
    state.sngShownMax = 38;
    state.sngShownMin = 20;
    state.sngMax = 99;  // Calculate's margin, which is dropped
    shows[2].setValue(show);
    targetBoxes[8].setValue(box);
    labels[17].caption = caption;
    RecalculateMaxMin(state, sets);
    EXPECT_EQ(state.sngMax, max) << what;
    EXPECT_EQ(state.sngMin, min) << what;
  }
}

TEST_F(Calculator, DrawsShownSetsInOrderRetracementsSolidTargetsDashed) {
  levels = {{{1, 2, 3}, {}, {4, 5, 6}, {}, {}, {11, 12, 13}, {}, {14, 15, 16}}};
  shows[0].setValue(1);
  shows[3].setValue(1);
  shows[1].setValue(2);  // indeterminate: not shown
  targetBoxes[1].setValue(1);
  targetBoxes[9].setValue(2);
  labels[0].foreColor = {0xABCDEF};
  state.sRows.resize(4);
  RecordingSurface surface;
  ShowLines(state, redrawSteps(state, levels, sets, surface, [&] { surface.Cls(); }));
  EXPECT_THAT(surface.calls,
              ElementsAre("cls", "line 40,1 1000,1 ABCDEF", "line 40,2 1000,2 ABCDEF",
                          "line 40,3 1000,3 ABCDEF", "line 40,5 1000,5 ABCDEF dash",
                          "line 40,11 1000,11 000004", "line 40,12 1000,12 000004",
                          "line 40,13 1000,13 000004", "line 40,14 1000,14 000004 dash"));
}

}  // namespace
}  // namespace quintara::test
