#include "levels/calculate.hpp"

#include <tuple>

#include "support/program.hpp"

namespace quintara::test {
namespace {

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

struct Calculator : Program {
  /// Twelve bars and the quote, from 49 to 63.
  Calculator() {
    platform.bars = 12;
    drawChart();
  }
};

TEST_F(Calculator, FillsASetWhenItsPointsAreAboveZeroAndElseLeavesIt) {
  for (const std::string A : {"A1", "A2", "A3", "A4"})
    for (const char* missing : {"", "0", "-5", "word"})
      for (unsigned given = 0; given < 8; ++given) {
        press("cmdClear");
        caption("lbl" + A + "R1") = caption("lbl" + A + "T3") = "old";
        const char trend = A < "A3" ? '1' : '2';
        const auto point = [&](unsigned bit) { return (given & bit) != 0 ? "0.5" : missing; };
        calculate({{A, point(1)},
                   {std::string("B") + trend, point(2)},
                   {std::string("C") + trend, point(4)}});
        const std::string both = (given & 3) == 3 ? "0.5" : "old";
        EXPECT_EQ(caption("lbl" + A + "R1"), both) << A << given;
        EXPECT_EQ(caption("lbl" + A + "T3"), given == 7 ? "0.5" : "old") << A << given;
      }
}

TEST_F(Calculator, DrawsForASetWhatItsLabelsShowInTheirColour) {
  calculate({{"A1", "50"}, {"A2", "51"}, {"B1", "60"}, {"C1", "55"}});
  calculate({{"A3", "62"}, {"A4", "63"}, {"B2", "50"}, {"C2", "55"}});
  for (const std::string A : {"A1", "A2", "A3", "A4"}) {
    get<HeadlessLabel>("lbl" + A + "R1").foreColor = {0x123456};
    for (const char* box : {"E1", "E1382", "E1618"}) tick("chk" + A + box);
    tick("chkShow" + A);
    std::vector<std::string> lines;
    for (const char* level : {"R1", "R2", "R3", "T1", "T2", "T3"}) {
      const std::string y = caption("lbl" + A + level);
      lines.push_back("line 40," + y + " 1000," + y + " 123456" + (*level == 'T' ? " dash" : ""));
    }
    EXPECT_EQ(std::vector(chart().calls.end() - 6, chart().calls.end()), lines);
    tick("chkShow" + A, 0);
  }
}

TEST_F(Calculator, NamesTheLevelsWhoseLinesAreOnTheChart) {
  calculate({{"A1", "50"}, {"B1", "60"}, {"C1", "58"}, {"A2", "10"}});
  for (const char* box : {"chkA1E1", "chkA1E1618", "chkA2E1", "chkShowA1"}) tick(box);
  EXPECT_THAT(chart().description,
              testing::EndsWith("; A1 retracements 56.18, 55, 53.82; A1 targets 68, 74.18"));
  tick("chkShowA2");  // retracements 40.9 to 29.1 lie below, and the target stretches the range
  EXPECT_THAT(chart().description, testing::EndsWith("A1 targets 68, 74.18; A2 targets 108"));
  tick("chkShowA1", 2);
  EXPECT_THAT(chart().description, testing::EndsWith("newest close 60.5; A2 targets 108"));
  press("cmdClear");
  EXPECT_THAT(chart().description, testing::Not(testing::HasSubstr("A2")));
}

TEST_F(Calculator, StretchesTheRangeOfClearsDrawingForTheMiddleTargetOfA1ToA3) {
  const std::pair<Points, const char*> kCases[] = {
      {{{"A1", "50"}, {"B1", "60"}, {"C1", "58"}}, "49 to 73.9746"},
      {{{"A2", "50"}, {"B1", "60"}, {"C1", "58"}}, "49 to 73.9746"},
      {{{"A3", "60"}, {"B2", "50"}, {"C2", "55"}}, "39.9446 to 63"},
      {{{"A4", "60"}, {"B2", "50"}, {"C2", "55"}}, "49 to 63"},
      {{{"A1", "50"}, {"B1", "60"}, {"C1", "48"}}, "49 to 63"},
      {{{"A1", "60"}, {"B1", "50"}, {"C1", "55"}}, "49 to 63"},  // A1 and A2 upwards, A3 downwards
      {{{"A3", "50"}, {"B2", "60"}, {"C2", "58"}}, "49 to 63"},
      {{{"A1", "60"}, {"B1", "60"}, {"C1", "63"}}, "49 to 63"},  // it lies on the border
      {{{"A3", "60"}, {"B2", "60"}, {"C2", "49"}}, "49 to 63"},
  };
  for (const auto& [points, stretched] : kCases) {
    calculate(points);
    press("cmdClear");
    EXPECT_EQ(range(), stretched);
    choose("cboChartType", 1);
    EXPECT_EQ(range(), "49 to 63") << "every other drawing drops it";
  }
}

TEST_F(Calculator, KeepsWhatWasFilledBeforeAnOverflow) {
  EXPECT_THROW(calculate({{"A1", "1"}, {"B1", "3e38"}, {"C1", "3e38"}}), RuntimeError);
  EXPECT_NE(caption("lblA1R3"), "") << "retracements come first";
  EXPECT_EQ(caption("lblA1T1"), "");
  caption("lblA1R1") = "old";
  EXPECT_THROW(calculate({{"B1", "5"}, {"B2", "1e39"}}), RuntimeError);
  EXPECT_EQ(caption("lblA1R1"), "old") << "a box beyond single range fails when it is read";
}

TEST_F(Calculator, WidensTheRangeToTickedTargetsOfShownSets) {
  const std::tuple<const char*, std::int16_t, std::int16_t, const char*, const char*> kCases[] = {
      {"above", 1, 1, "71.197", "49 to 71,197"}, {"below", 1, 1, "14.657", "14,657 to 63"},
      {"not shown", 0, 1, "71.197", "49 to 63"}, {"not ticked", 1, 0, "71.197", "49 to 63"},
      {"indeterminate", 1, 2, "71", "49 to 63"}, {"empty", 1, 1, "", "49 to 63"},
      {"negative", 1, 1, "-3", "49 to 63"},      {"comma reads whole", 1, 1, "66,5", "49 to 66"},
      {"below one", 1, 1, "0.5", "0,5 to 63"},
  };
  const ScopedSeparator comma(",");  // for the range that is said, not for the captions
  for (const auto& [what, show, box, target, widened] : kCases) {
    caption("lblA3T3") = target;
    tick("chkShowA3", show);
    tick("chkA3E1618", box);
    EXPECT_EQ(range(), widened) << what;
    EXPECT_THAT(chart().description, testing::HasSubstr(", prices 49 to 63, ")) << "of the bars";
    for (const char* ticked : {"chkShowA3", "chkA3E1618"}) tick(ticked, 0);
  }
}

TEST_F(Calculator, DrawsShownSetsInOrderRetracementsSolidTargetsDashed) {
  calculate();
  calculate({{"A2", "51"}, {"A3", "62"}, {"A4", "63"}, {"B2", "50"}, {"C2", "55"}});
  for (const char* box : {"chkA1E1382", "chkShowA3", "chkShowA1"}) tick(box);
  for (const char* indeterminate : {"chkA3E1", "chkShowA2"}) tick(indeterminate, 2);
  EXPECT_THAT(
      std::vector(chart().calls.end() - 9, chart().calls.end()),
      testing::ElementsAre(testing::EndsWith("00FF00"), "line 40,56.18 1000,56.18 0000FF",
                           "line 40,55 1000,55 0000FF", "line 40,53.82 1000,53.82 0000FF",
                           "line 40,68.82 1000,68.82 0000FF dash",
                           "line 40,54.584 1000,54.584 FF00FF", "line 40,56 1000,56 FF00FF",
                           "line 40,57.416 1000,57.416 FF00FF", "line 40,43 1000,43 FF00FF dash"));
}

}  // namespace
}  // namespace quintara::test
