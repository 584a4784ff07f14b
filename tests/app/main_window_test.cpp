#include "app/main_window.hpp"

#include <tuple>

#include "support/program.hpp"

namespace quintara::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(Program, DrawsATickerFromEndToEndWithTheDefaults) {
  EXPECT_EQ(sDecimalSep + sThousandSep, ".,");
  for (const auto& [box, index] :
       {std::pair{"cboChartType", 0}, {"cboDuration", 1}, {"cboInterval", 0}})
    EXPECT_EQ(get<ComboBox>(box).ListIndex(), index) << box;
  drawChart("");
  EXPECT_TRUE(get<HeadlessTextBox>("txtTicker").hasFocus);
  drawChart();
  EXPECT_THAT(platform.log,
              ElementsAre(HasSubstr("window Quintara"), "shown",
                          "48 Quintara: Please enter Ticker Symbol", "dialog Retrieving data......",
                          "at 7260,4890", "shown", HasSubstr("table.csv?s=xyz&a=11&b=16&c=2025&"),
                          HasSubstr("quotes.csv"), HasSubstr("closed Building")))
      << "in the middle of a screen of 19200 x 10800";
  std::string readout;
  for (const char* value : {"Date", "Open", "High", "Low", "Close"})
    readout += caption(std::string("lbl") + value) + ' ';
  EXPECT_EQ(readout, "16-Nov-26 60.25 61.75 59.5 60.5 ");
  EXPECT_EQ(text("txtClose"), "60.5");
  EXPECT_EQ(chart().with("", "00FF00").size(), 134U * 3) << "401 pixels, 3 apart";
  EXPECT_THAT(chart().description, HasSubstr("xyz: 134 bars shown"));
}

TEST_F(Program, EveryControlThatTakesTheFocusHasOneTurn) {
  const auto& window = dynamic_cast<const FakeWindow&>(*platform.window);
  for (const auto& [name, control] : window.designs) {
    const bool takesFocus = !name.empty() && control.kind != ControlKind::Label &&
                            control.kind != ControlKind::Frame &&
                            control.kind != ControlKind::Image;
    EXPECT_EQ(std::count(window.tabOrder.begin(), window.tabOrder.end(), name), takesFocus) << name;
  }
}

TEST_F(Program, SpanBoxServesDailyBarsOnly) {
  choose("cboDuration", 3);
  drawChart();
  EXPECT_THAT(platform.log.end()[-3], HasSubstr("&a=11&b=16&c=2024&"));
  for (const std::int16_t interval : std::vector<std::int16_t>{1, 2, 0}) {
    choose("cboInterval", interval);
    EXPECT_EQ(get<HeadlessComboBox>("cboDuration").enabled, interval == 0);
    drawChart();
    EXPECT_THAT(platform.log.end()[-3], HasSubstr(std::string("&g=") + "dwm"[interval]));
  }
}

TEST_F(Program, ClearUnticksBoxByBoxEachARedraw) {
  drawChart();
  calculate();
  for (const char* box : {"chkShowA1", "chkA1E1618"}) tick(box);
  redraws();
  press("cmdClear");
  EXPECT_EQ(redraws(), 3U) << "Show A1, its target box, and the last one without levels";
  EXPECT_EQ(text("txtA1") + caption("lblA1T3"), "");
  tick("chkShowA1");
  EXPECT_THAT(chart().with("line 40,56.18 "), Not(IsEmpty())) << "the table keeps its levels";
  // During Draw Chart the boxes are unticked over the new rows, before the new series is built.
  redraws();
  drawChart();
  EXPECT_EQ(redraws(), 2U);
  calculate();
  for (const char* box : {"chkShowA1", "chkShowA2"}) tick(box);
  chart().failDrawing = true;
  EXPECT_THROW(press("cmdClear"), RuntimeError);
  EXPECT_EQ(get<CheckBox>("chkShowA1").Value(), 0) << "its value was set";
  EXPECT_EQ(get<CheckBox>("chkShowA2").Value(), 1);
  EXPECT_EQ(caption("lblA1R1"), "");
  EXPECT_EQ(text("txtA1"), "50");
}

TEST_F(Program, KeepsTheOldRowsUntilBothRepliesAreIn) {
  drawChart();
  platform.bars = 5;
  platform.quote = []() -> std::string { throw RuntimeError(ErrorKind::TransferFailed); };
  drawChart();
  platform.quote = []() -> std::string { throw std::bad_alloc(); };
  platform.log.clear();
  drawChart();
  EXPECT_THAT(
      std::vector(platform.log.end() - 2, platform.log.end()),
      ElementsAre(HasSubstr("closed Retrieving"),
                  AllOf(StartsWith("16 Data retrieval error: "), HasSubstr(" for XYZ\r\n"))));
  platform.quote = []() -> std::string { throw std::logic_error("ours"); };
  EXPECT_THROW(drawChart(), std::logic_error);
  EXPECT_THAT(platform.log.back(), HasSubstr("closed")) << "whatever happens";
  redraws();
  press("cmdExpand");
  EXPECT_EQ(chart().with("", "00FF00").size(), 100U * 3);
}

TEST_F(Program, EndsAChartWithoutAWordWhenMemoryRunsOut) {
  platform.quote = [this] {
    chart().outOfMemory = true;
    platform.log.clear();
    return test::quote();
  };
  EXPECT_NO_THROW(drawChart());
  EXPECT_THAT(platform.log, ElementsAre(HasSubstr("closed")));
}

TEST_F(Program, BoxesTickedBeforeTheFirstChartDoNotStopIt) {
  for (const char* box : {"chkShowA1", "chkA1E1"}) tick(box);
  press("cmdExpand");
  EXPECT_THAT(chart().calls, IsEmpty());
  drawChart();
  EXPECT_EQ(text("txtClose"), "60.5");
  EXPECT_EQ(get<CheckBox>("chkShowA1").Value(), 0);
}

TEST_F(Program, AFailureBeforeTheFirstSeriesLeavesAWindowThatWorks) {
  tick("chkShowA1");
  chart().failDrawing = true;
  drawChart();
  chart().failDrawing = false;
  EXPECT_THAT(chart().PointerStops(), IsEmpty());
  EXPECT_THROW(press("cmdExpand"), RuntimeError);
  chart().MouseMove({0, 0, 40, 50});
  platform.window->MouseMove({});
  platform.table = [] { return "Date\nrow"; };
  platform.quote = [] { return quote("N/A"); };
  drawChart();
  EXPECT_THAT(chart().PointerStops(), IsEmpty()) << "an empty series";
  platform.table = [] { return table(200); };
  drawChart();
  EXPECT_THAT(chart().PointerStops(), SizeIs(100)) << "the spacing had grown before the failure";
}

TEST_F(Program, SpreadsAndPacksBarsAsIfTheyWereDrawnAnew) {
  platform.bars = 699;
  drawChart();
  const std::tuple<const char*, std::size_t, std::size_t> kPresses[] = {
      {"cmdExpand", 100, 24},  {"cmdExpand", 80, 24},   {"cmdExpand", 0, 0},
      {"cmdSupress", 100, 24}, {"cmdSupress", 134, 24}, {"cmdSupress", 200, 24},
      {"cmdSupress", 401, 12}, {"cmdSupress", 0, 0},    {"cmdExpand", 200, 24},
  };
  for (const auto& [button, bodies, dates] : kPresses) {
    redraws();
    press(button);
    EXPECT_EQ(chart().with("", "00FF00").size(), 3 * bodies) << button;
    EXPECT_EQ(chart().with("print", "02]").size(), dates) << button;
    const auto spread = picture();
    EXPECT_EQ(redraws(), bodies == 0 ? 0U : 1U) << button;
    drawChart();
    EXPECT_TRUE(bodies == 0 || picture() == spread) << "to the last bar, whose date is shown";
  }
  platform.bars = 40000;
  drawChart();
  redraws();
  EXPECT_THROW(press("cmdExpand"), RuntimeError) << "more bars than 16 bits count";
  EXPECT_EQ(redraws(), 0U);
}

TEST_F(Program, FollowsTheWindowsSize) {
  drawChart();
  tick("chkShowA1");
  const auto redrawsAtWidth = [&](float width) {
    redraws();
    platform.window->resize(width, platform.window->ScaleHeight());
    return chart().with("cls").size();
  };
  EXPECT_EQ(chart().pixelHeight, 511) << "down to the lower border from the start";
  EXPECT_EQ(redrawsAtWidth(11790), 1U);
  EXPECT_EQ(chart().pixelWidth, 466);
  EXPECT_EQ(chart().pixelHeight, 511);
  EXPECT_EQ(chart().with("", "00FF00").size(), 155U * 3);
  EXPECT_EQ(chart().with("", "0000FF").size(), 3U) << "level lines survive";
  EXPECT_EQ(redrawsAtWidth(4000), 0U);
  EXPECT_EQ(chart().pixelWidth, 466) << "too narrow: the chart keeps its size";
  chart().failDrawing = true;
  redrawsAtWidth(10815);  // swallowed, but the flag stays
  chart().failDrawing = false;
  EXPECT_EQ(redrawsAtWidth(10830), 0U) << "off until a drawing completes";
  press("cmdExpand");
  EXPECT_EQ(redrawsAtWidth(10815), 1U);
  EXPECT_EQ(redrawsAtWidth(2e6F), 1U);
  EXPECT_THAT(chart().with("", "00FF00"), IsEmpty()) << "more bars than 16 bits count";
}

TEST_F(Program, ChoosingATypeDrawsItAndNeverReports) {
  choose("cboChartType", 2);
  drawChart();
  EXPECT_THAT(chart().with("box"), IsEmpty());
  choose("cboChartType", 1);
  EXPECT_THAT(chart().with("", "00FF00"), SizeIs(3 * 134 + 133));
  chart().failDrawing = true;
  EXPECT_NO_THROW(choose("cboChartType", 0));
}

struct Pointer : Program {
  void moveOver(const std::string& name, float x = 40, float y = 50) {
    get<Control>(name).MouseMove({0, 0, x, y});
  }
  void leaveControls() { platform.window->MouseMove({}); }
  void pressAndRelease(std::int16_t button = 1, std::int32_t colour = -1) {
    chart().MouseDown({button, 0, 40, 60});
    chart().pointColour = colour;
    chart().MouseUp({1, 0, 40, 60});
    EXPECT_EQ(platform.pointer, 2);
  }
};

TEST_F(Pointer, ReadsTheBarUnderIt) {
  moveOver("picChart");
  EXPECT_EQ(caption("lblOpen"), "") << "no series yet";
  EXPECT_EQ(platform.pointer, 2);
  drawChart();
  const std::tuple<float, const char*> kCases[] = {
      {40, "60.25"}, {42.9F, "60.25"}, {43, "50"}, {39.9F, "60.25"},
      {0, "60.25"},  {-9, "60.25"},    {46, "51"}, {2000, "249"},
  };
  for (const auto& [x, open] : kCases) {
    moveOver("picChart", x, 23.45678F);
    EXPECT_EQ(caption("lblOpen"), open) << x;
  }
  moveOver("picChart", 1e6F, 7);
  EXPECT_EQ(caption("lblCurrent"), "23.457") << "beyond a 16-bit bar number nothing changes";
  leaveControls();
  EXPECT_EQ(caption("lblOpen"), "60.25");
  EXPECT_EQ(caption("lblCurrent"), "");
  EXPECT_EQ(platform.pointer, 0);
}

TEST_F(Pointer, PicksFromOneBarAndLeavesTheChartFromTwo) {
  const std::tuple<const char*, const char*, const char*, const char*, const char*> kCases[] = {
      {"Date\nrow", "N/A", "", "", ""},
      {"one bar", "N/A", "50", "50", "49"},
      {"two bars", "60.25", "60.25", "", "49"}};
  for (const auto& [what, quoted, open, current, low] : kCases) {
    platform.table = [what = what] { return *what == 'D' ? what : table(1); };
    platform.quote = [quoted = quoted] { return quote(quoted); };
    drawChart();
    moveOver("picChart", 2000);
    pressAndRelease();
    moveOver("txtA1");
    EXPECT_EQ(text("txtA1"), low) << what;
    leaveControls();
    EXPECT_EQ(caption("lblOpen"), open) << what;
    EXPECT_EQ(caption("lblCurrent"), current) << what;
  }
}

TEST_F(Pointer, DropsEachBoxsPriceOnce) {
  drawChart();
  const std::pair<const char*, const char*> kCases[] = {
      {"txtA1", "59.5"},  {"txtA2", "59.5"},  {"txtB1", "61.75"}, {"txtC1", "59.5"},
      {"txtA3", "61.75"}, {"txtA4", "61.75"}, {"txtB2", "59.5"},  {"txtC2", "61.75"}};
  for (const auto& [box, price] : kCases) {
    moveOver(box);
    EXPECT_EQ(text(box), "") << "nothing is held yet";
  }
  for (const auto& [box, price] : kCases) {
    pressAndRelease();
    moveOver(box);
    EXPECT_EQ(text(box), price);
    text(box) = "kept";
    moveOver(box);
    EXPECT_EQ(text(box), "kept");
    EXPECT_EQ(platform.pointer, 0);
  }
  caption("lblLow") = "-2";
  pressAndRelease();
  moveOver("txtA1");
  EXPECT_EQ(text("txtA1"), "kept") << "a low that is not above 0 is not held";
  moveOver("txtC1");
  EXPECT_EQ(text("txtC1"), "-2") << "tests the high, takes the low";
  caption("lblLow") = "0.5";
  pressAndRelease();
  moveOver("txtA2");
  EXPECT_EQ(text("txtA2"), "0.5") << "a price below 1";
}

TEST_F(Pointer, HoldsAPriceUntilItLeavesTheChart) {
  drawChart();
  const std::tuple<const char*, std::int16_t, std::int32_t, const char*, const char*> kCases[] = {
      {"outside", 1, -1, "picChart", "59.5"},  {"over ink", 1, 0xC0C0C0, "picChart", "59.5"},
      {"over black", 1, 0, "picChart", ""},    {"right button", 2, -1, "picChart", ""},
      {"both buttons", 3, -1, "picChart", ""},
  };
  for (const auto& [what, button, colour, crossed, dropped] : kCases) {
    text("txtA1") = "";
    pressAndRelease(button, colour);
    moveOver(crossed);
    moveOver("txtA1");
    EXPECT_EQ(text("txtA1"), dropped) << what;
  }
  // Across the background or a frame, by the low that is held.
  for (const char* way : {"", "Frame1", "Frame2", "Frame3", "Frame4", "Frame5", "Frame6"})
    for (const auto& [low, dropped] : {std::pair{"0.5", ""}, {"0", "61.75"}}) {
      text("txtB1") = "";
      caption("lblLow") = low;
      pressAndRelease();
      *way != '\0' ? moveOver(way) : leaveControls();
      EXPECT_EQ(platform.pointer, 0);
      moveOver("txtB1");
      EXPECT_EQ(text("txtB1"), dropped) << way << low;
    }
}

TEST_F(Pointer, FreezesTheReadoutUntilTheDragEnds) {
  drawChart();
  chart().MouseDown({1, 0, 40, 60});
  moveOver("picChart", 46);
  EXPECT_EQ(caption("lblOpen"), "60.25");
  EXPECT_EQ(platform.pointer, 99);
  EXPECT_EQ(platform.icon, get<Image>("imgDragDrop2").Picture());
  EXPECT_NE(platform.icon, "");
  chart().MouseUp({1, 0, 40, 60});
  moveOver("picChart", 46);
  EXPECT_EQ(caption("lblOpen"), "51");
  caption("lblLow") = "";
  EXPECT_THROW(chart().MouseDown({1, 0, 40, 60}), RuntimeError);
}

TEST_F(Program, HelpOpensItsFileOrSaysWhyNot) {
  press("cmdHelp");
  EXPECT_EQ(platform.log.back(), "help /opt/quintara/Helpfile.hlp 261 []");
  platform.launchError = "no viewer";
  platform.window->Help();
  EXPECT_EQ(platform.log.back(), "0 Quintara: no viewer");
}

}  // namespace
}  // namespace quintara::test
