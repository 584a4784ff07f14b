#include "app/main_window.hpp"

#include <gmock/gmock.h>

#include <tuple>

#include "app/module1.hpp"
#include "support/fakes.hpp"
#include "support/wire.hpp"

namespace quintara::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// The whole program over the fake platform: what a trader does, without windows.
struct Program : testing::Test {
  Program() : form(Main(platform.platform(), {"history", "quotes"})) {
    platform.table = [this] { return table(bars); };
    platform.quote = [] { return quote(); };
    platform.log.clear();
  }
  ~Program() override { sDecimalSep = sThousandSep = ""; }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  template <class Kind>
  Kind& get(const std::string& name) {
    return platform.windows.front()->control<Kind>(name);
  }
  std::string& caption(const std::string& label) { return get<FakeLabel>(label).caption; }
  std::string& text(const std::string& box) { return get<FakeTextBox>(box).text; }
  FakePictureBox& chart() { return get<FakePictureBox>("picChart"); }
  void press(const std::string& button) { get<Button>(button).Click(); }
  void drawChart(const std::string& ticker = "xyz") {
    text("txtTicker") = ticker;
    press("cmdChart");
  }
  /// How often the chart was drawn since the last call, and what the last drawing holds.
  std::size_t redraws() {
    const std::size_t count = chart().with("cls").size();
    chart().calls.clear();
    return count;
  }
  void calculate() {
    text("txtA1") = "50";
    text("txtB1") = "60";
    text("txtC1") = "55";
    press("cmdCalculate");
  }

  int bars = 200;
  FakePlatform platform;
  std::unique_ptr<frmQuintara> form;
};

TEST_F(Program, StartsWithTheDefaults) {
  EXPECT_TRUE(platform.windows.front()->shown);
  EXPECT_EQ(platform.windows.front()->Caption(), "Quintara - Version 2.00.01");
  for (const auto& [box, index] :
       {std::pair{"cboChartType", 0}, {"cboDuration", 1}, {"cboInterval", 0}})
    EXPECT_EQ(get<ComboBox>(box).ListIndex(), index) << box;
  EXPECT_EQ(FakePictureBox::point(chart().pixelWidth, chart().pixelHeight), "401,511");
  EXPECT_EQ(sDecimalSep + sThousandSep, ".,");
}

TEST_F(Program, DrawsATickerFromEndToEnd) {
  drawChart();
  EXPECT_THAT(platform.log, ElementsAre("window Retrieving data......",
                                        HasSubstr("table.csv?s=xyz&"), HasSubstr("quotes.csv")));
  EXPECT_EQ(text("txtClose"), "60.5");
  const std::pair<const char*, const char*> kReadout[] = {{"lblDate", "16-Nov-26"},
                                                          {"lblOpen", "60.25"},
                                                          {"lblHigh", "61.75"},
                                                          {"lblLow", "59.5"},
                                                          {"lblClose", "60.5"}};
  for (const auto& [label, shown] : kReadout) EXPECT_EQ(caption(label), shown);
  EXPECT_EQ(chart().with("", "00FF00").size(), 134U * 3) << "401 pixels, 3 apart";
  EXPECT_THAT(chart().description, HasSubstr("xyz: 134 bars shown"));
}

TEST_F(Program, TellsWhyItCannotDraw) {
  drawChart("");
  EXPECT_THAT(platform.log, ElementsAre("48 Quintara: Please enter Ticker Symbol"));
  EXPECT_EQ(get<FakeTextBox>("txtTicker").focused, 1);
  platform.log.clear();
  drawChart();
  calculate();
  platform.table = []() -> std::string { throw RuntimeError(ErrorKind::TransferFailed); };
  drawChart("abc");
  EXPECT_EQ(platform.log.back(),
            "16 Data retrieval error: Error occurred while retrieving historical data for ABC\r\n"
            "Please verify that the ticker symbol entered is correct and you are connected to the "
            "Internet");
  EXPECT_EQ(text("txtA1"), "50") << "nothing was cleared";
  EXPECT_EQ(caption("lblClose"), "60.5");
}

TEST_F(Program, SpanBoxServesDailyBarsOnly) {
  for (const int interval : {1, 2, 0}) {
    get<ComboBox>("cboInterval").setListIndex(static_cast<std::int16_t>(interval));
    EXPECT_EQ(get<FakeComboBox>("cboDuration").enabled, interval == 0);
    drawChart();
    EXPECT_THAT(platform.log.end()[-2], HasSubstr(std::string("&g=") + "dwm"[interval]));
  }
}

TEST_F(Program, ClearUnticksBoxByBoxEachARedraw) {
  drawChart();
  calculate();
  get<CheckBox>("chkShowA1").setValue(1);
  get<CheckBox>("chkA1E1618").setValue(1);
  redraws();
  press("cmdClear");
  EXPECT_EQ(redraws(), 3U) << "Show A1, its target box, and the last one without levels";
  EXPECT_EQ(text("txtA1"), "");
  EXPECT_EQ(caption("lblA1T3"), "");
  get<CheckBox>("chkShowA1").setValue(1);
  EXPECT_THAT(chart().with("line 40,56.18 "), Not(IsEmpty())) << "the table keeps its levels";
  // During Draw Chart the boxes are unticked over the new rows, before the new series is built.
  redraws();
  drawChart();
  EXPECT_EQ(redraws(), 2U);
}

TEST_F(Program, ClearStopsAtTheBoxWhoseRedrawFails) {
  drawChart();
  calculate();
  get<CheckBox>("chkShowA1").setValue(1);
  get<CheckBox>("chkShowA2").setValue(1);
  chart().failDrawing = true;
  EXPECT_THROW(press("cmdClear"), RuntimeError);
  EXPECT_EQ(get<CheckBox>("chkShowA1").Value(), 0) << "its value was set";
  EXPECT_EQ(get<CheckBox>("chkShowA2").Value(), 1);
  EXPECT_EQ(caption("lblA1R1"), "");
  EXPECT_EQ(text("txtA1"), "50");
}

TEST_F(Program, CalculatesMarginShowsOnlyInClearsDrawing) {
  const auto scale = [this] { return chart().with("scale").back(); };
  drawChart();
  const std::string barsOnly = scale();
  text("txtA1") = "100";
  text("txtB1") = "200";
  text("txtC1") = "190";
  press("cmdCalculate");
  press("cmdClear");
  EXPECT_NE(scale(), barsOnly);
  get<ComboBox>("cboChartType").setListIndex(1);
  EXPECT_EQ(scale(), barsOnly);
}

TEST_F(Program, BoxesTickedBeforeTheFirstChartDoNotStopIt) {
  get<CheckBox>("chkShowA1").setValue(1);
  get<CheckBox>("chkA1E1").setValue(1);
  EXPECT_THAT(chart().calls, IsEmpty());
  drawChart();
  EXPECT_EQ(text("txtClose"), "60.5");
  EXPECT_EQ(get<CheckBox>("chkShowA1").Value(), 0);
}

TEST_F(Program, SpreadsAndPacksBars) {
  press("cmdExpand");
  EXPECT_THAT(chart().calls, IsEmpty()) << "nothing without a chart";
  bars = 3000;
  drawChart();
  const std::tuple<const char*, std::size_t, std::size_t> kPresses[] = {
      {"cmdExpand", 100, 1},  {"cmdExpand", 80, 1},   {"cmdExpand", 80, 0},
      {"cmdSupress", 100, 1}, {"cmdSupress", 134, 1}, {"cmdSupress", 200, 1},
      {"cmdSupress", 401, 1}, {"cmdSupress", 401, 0}, {"cmdExpand", 200, 1},
  };
  redraws();
  std::size_t bodies = 0;
  for (const auto& [button, shown, expectedRedraws] : kPresses) {
    press(button);
    if (expectedRedraws > 0) bodies = chart().with("", "00FF00").size() / 3;
    EXPECT_EQ(bodies, shown) << button;
    EXPECT_EQ(redraws(), expectedRedraws) << button;
  }
  bars = 40000;
  drawChart();
  redraws();
  EXPECT_THROW(press("cmdExpand"), RuntimeError) << "more bars than 16 bits count";
  EXPECT_EQ(redraws(), 0U);
}

TEST_F(Program, FollowsTheWindowsSize) {
  drawChart();
  get<CheckBox>("chkShowA1").setValue(1);
  redraws();
  FakeWindow& window = *platform.windows.front();
  window.design.scaleWidth += 975;
  window.design.scaleHeight += 495;
  window.Resize();
  EXPECT_EQ(chart().pixelWidth, 466);
  EXPECT_EQ(chart().with("", "00FF00").size(), 155U * 3);
  EXPECT_EQ(chart().with("", "0000FF").size(), 3U) << "level lines survive";
  redraws();
  window.design.scaleWidth = 4000;
  window.Resize();
  EXPECT_EQ(chart().pixelWidth, 466) << "too narrow: the chart keeps its size";
  EXPECT_EQ(redraws(), 0U);
  window.design.scaleWidth = 10815;
  chart().failDrawing = true;
  window.Resize();  // swallowed, but the flag stays
  chart().failDrawing = false;
  redraws();
  window.Resize();
  EXPECT_EQ(redraws(), 0U) << "off until a drawing completes";
  press("cmdExpand");
  window.Resize();
  EXPECT_EQ(redraws(), 2U);
}

struct Pointer : Program {
  void moveOver(float x, float y) { chart().MouseMove({0, 0, x, y}); }
  void moveOverBox(const std::string& box) { get<FakeTextBox>(box).MouseMove({}); }
  void pressAndRelease(std::int16_t button, std::int32_t colour) {
    chart().MouseDown({button, 0, 40, 60});
    chart().pointColour = colour;
    chart().MouseUp({1, 0, 40, 60});
  }
};

TEST_F(Pointer, ReadsTheBarUnderIt) {
  moveOver(50, 1);
  EXPECT_EQ(caption("lblOpen"), "") << "no series yet";
  EXPECT_EQ(platform.pointer, 2);
  drawChart();
  const std::tuple<float, const char*> kCases[] = {
      {40, "60.25"}, {42.9F, "60.25"}, {43, "50"}, {39.9F, "60.25"},
      {0, "60.25"},  {-9, "60.25"},    {46, "51"}, {2000, "249"},
  };
  for (const auto& [x, open] : kCases) {
    moveOver(x, 23.45678F);
    EXPECT_EQ(caption("lblOpen"), open) << x;
  }
  EXPECT_EQ(caption("lblCurrent"), "23.457");
  moveOver(1e6F, 7);
  EXPECT_EQ(caption("lblCurrent"), "23.457") << "beyond a 16-bit bar number nothing changes";
  platform.windows.front()->MouseMove({});
  EXPECT_EQ(caption("lblOpen"), "60.25");
  EXPECT_EQ(caption("lblCurrent"), "");
  EXPECT_EQ(platform.pointer, 0);
}

TEST_F(Pointer, DropsEachBoxsPrice) {
  drawChart();
  const std::tuple<const char*, const char*> kCases[] = {
      {"txtA1", "59.5"},  {"txtA2", "59.5"},  {"txtB1", "61.75"}, {"txtC1", "59.5"},
      {"txtA3", "61.75"}, {"txtA4", "61.75"}, {"txtB2", "59.5"},  {"txtC2", "61.75"},
  };
  for (const auto& [box, price] : kCases) {
    pressAndRelease(1, -1);
    moveOverBox(box);
    EXPECT_EQ(text(box), price);
    text(box) = "kept";
    moveOverBox(box);
    EXPECT_EQ(text(box), "kept") << "dropped once";
    EXPECT_EQ(platform.pointer, 0);
  }
  caption("lblLow") = "-2";
  pressAndRelease(1, -1);
  moveOverBox("txtA1");
  EXPECT_EQ(text("txtA1"), "kept") << "a low that is not above 0 is not held";
  moveOverBox("txtC1");
  EXPECT_EQ(text("txtC1"), "-2") << "tests the high, takes the low";
}

TEST_F(Pointer, HoldsAndLetsGo) {
  drawChart();
  const std::function<void()> nothing = [] {};
  const std::tuple<const char*, std::int16_t, std::int32_t, std::function<void()>, const char*>
      kCases[] = {
          {"outside", 1, -1, nothing, "59.5"},
          {"over ink", 1, 0x00C0C0C0, nothing, "59.5"},
          {"over black", 1, 0, nothing, ""},
          {"right button", 2, -1, nothing, ""},
          {"both buttons", 3, -1, nothing, ""},
          {"across the background", 1, -1, [this] { platform.windows.front()->MouseMove({}); }, ""},
          {"across a frame", 1, -1, [this] { get<Frame>("Frame1").MouseMove({}); }, ""},
          {"back over the chart", 1, -1, [this] { moveOver(40, 50); }, "59.5"},
          {"another release over black", 1, -1, [this] { pressAndRelease(2, 0); }, ""},
      };
  for (const auto& [what, button, colour, before, dropped] : kCases) {
    text("txtA1") = "";
    pressAndRelease(button, colour);
    before();
    moveOverBox("txtA1");
    EXPECT_EQ(text("txtA1"), dropped) << what;
    pressAndRelease(2, 0);
  }
}

TEST_F(Pointer, FreezesTheReadoutWhileDragging) {
  drawChart();
  chart().MouseDown({1, 0, 40, 60});
  EXPECT_EQ(platform.pointer, 99);
  moveOver(46, 1);
  EXPECT_EQ(caption("lblOpen"), "60.25");
  EXPECT_EQ(platform.pointer, 99);
  caption("lblLow") = "";
  EXPECT_THROW(chart().MouseDown({1, 0, 40, 60}), RuntimeError);
}

TEST_F(Program, HelpOpensItsFileOrSaysWhyNot) {
  press("cmdHelp");
  EXPECT_THAT(platform.log, ElementsAre("help /opt/quintara/Helpfile.hlp 261 []"));
  platform.launchError = "no viewer";
  press("cmdHelp");
  EXPECT_EQ(platform.log.back(), "0 Quintara: no viewer");
}

}  // namespace
}  // namespace quintara::test
