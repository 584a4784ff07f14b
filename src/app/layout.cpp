#include "app/layout.hpp"

#include <array>

namespace quintara {

namespace {

using Kind = ControlKind;
using Designs = std::vector<ControlDesign>;

constexpr Colour kBlack{0x00000000};
constexpr Colour kWhite{0x00FFFFFF};
constexpr Colour kLightGrey{0x00C0C0C0};

constexpr LabelLook kPlain{};
constexpr LabelLook kHeader{.centred = true};
constexpr LabelLook kResult{.bordered = true};
constexpr LabelLook kOverChart{.transparent = true};
constexpr LabelLook kReadout{.transparent = true, .readout = true};

struct Place {
  float left, top, width, height;
};

ControlDesign design(Kind kind, const std::string& name, const std::string& container,
                     const std::string& caption, Place place) {
  ControlDesign result;
  result.kind = kind;
  result.name = name;
  result.container = container;
  result.caption = caption;
  result.left = place.left;
  result.top = place.top;
  result.width = place.width;
  result.height = place.height;
  return result;
}

ControlDesign label(const std::string& name, const std::string& container,
                    const std::string& caption, Place place, LabelLook look = kPlain) {
  ControlDesign result = design(Kind::Label, name, container, caption, place);
  result.look = look;
  return result;
}

ControlDesign meaning(ControlDesign control, const std::string& text) {
  control.meaning = text;
  return control;
}

ControlDesign foreColor(ControlDesign control, Colour colour) {
  control.foreColor = colour;
  control.hasForeColor = true;
  return control;
}

ControlDesign backColor(ControlDesign control, Colour colour) {
  control.backColor = colour;
  control.hasBackColor = true;
  return control;
}

ControlDesign picture(ControlDesign control, const std::string& name, const std::string& tooltip) {
  control.picture = name;
  control.tooltip = tooltip;
  control.meaning = tooltip;
  return control;
}

ControlDesign pilesUp(ControlDesign control) {
  control.pilesUp = true;
  return control;
}

void addTopBar(Designs& controls) {
  const auto combo = [](const char* name, const char* caption, const char* said, float left) {
    return meaning(design(Kind::ComboBox, name, "", caption, {left, 120, 1215, 315}), said);
  };
  const auto button = [](const char* name, float left, const char* art, const char* tooltip) {
    return picture(design(Kind::PictureButton, name, "", "", {left, 120, 345, 315}), art, tooltip);
  };
  controls.insert(controls.end(),
                  {
                      label("Label9", "", "Ticker:", {120, 120, 495, 195}),
                      meaning(design(Kind::TextBox, "txtTicker", "", "", {840, 120, 615, 285}),
                              "Ticker symbol"),
                      label("Label54", "", "Close:", {1605, 120, 435, 195}),
                      meaning(design(Kind::TextBox, "txtClose", "", "", {2160, 120, 855, 285}),
                              "Close of the newest bar"),
                      picture(design(Kind::Image, "imgDragDrop", "", "", {3720, 120, 345, 345}),
                              "dragdrop", ""),
                      picture(design(Kind::Image, "imgDragDrop2", "", "", {4200, 120, 480, 480}),
                              "dragdrop2", ""),
                      combo("cboChartType", "Chart Type", "Chart type", 4800),
                      combo("cboDuration", "Time-span", "Time span", 6120),
                      combo("cboInterval", "Chart Interval", "Chart interval", 7440),
                      button("cmdExpand", 8880, "expand", "Expand Chart"),
                      button("cmdSupress", 9240, "suppress", "Suppress Chart"),
                      button("cmdHelp", 9720, "help", "Help"),
                  });
}

struct FrameRow {
  const char* name;
  const char* caption;
  float top;
  float height;
  bool bold;
};
constexpr std::array kFrames{
    FrameRow{"Frame1", "Up Trend", 600, 685, true},
    FrameRow{"Frame3", "Retracement Up Trend", 1320, 1285, false},
    FrameRow{"Frame5", "Expansion Targets Up Trend", 2640, 1335, false},
    FrameRow{"Frame2", "Down Trend", 3960, 685, true},
    FrameRow{"Frame4", "Retracement Down Trend", 4680, 1285, false},
    FrameRow{"Frame6", "Expansion Targets Down Trend", 6000, 1335, false},
};

struct PointRow {
  const char* frame;
  const char* label;
  float labelLeft;
  const char* point;
  float boxLeft;
  const char* meaning;
};
constexpr std::array kPoints{
    PointRow{"Frame1", "Label1", 105, "A1", 405, "A1, start of the up trend"},
    PointRow{"Frame1", "Label2", 1230, "A2", 1560, "A2, other start of the up trend"},
    PointRow{"Frame1", "Label3", 2370, "B1", 2700, "B1, end of the up move"},
    PointRow{"Frame1", "Label7", 3525, "C1", 3840, "C1, end of the pull-back"},
    PointRow{"Frame2", "Label4", 120, "A3", 420, "A3, start of the down trend"},
    PointRow{"Frame2", "Label5", 1245, "A4", 1575, "A4, other start of the down trend"},
    PointRow{"Frame2", "Label6", 2385, "B2", 2715, "B2, end of the down move"},
    PointRow{"Frame2", "Label8", 3540, "C2", 3840, "C2, end of the rebound"},
};

void addInputFrames(Designs& controls) {
  constexpr float kTop = 240;
  for (const FrameRow& row : kFrames) {
    controls.push_back(
        design(Kind::Frame, row.name, "", row.caption, {0, row.top, 4695, row.height}));
    controls.back().bold = row.bold;
  }
  for (const PointRow& row : kPoints) {
    const std::string point = row.point;
    controls.push_back(label(row.label, row.frame, point + ":", {row.labelLeft, kTop, 240, 195}));
    controls.push_back(
        meaning(design(Kind::TextBox, "txt" + point, row.frame, "", {row.boxLeft, kTop, 735, 285}),
                row.meaning));
    controls.back().maxLength = 10;
  }
}

struct Header {
  const char* name;
  const char* caption;
  float left;
  float width;
};
struct ResultFrame {
  const char* frame;
  std::array<Header, 3> headers;
  std::array<const char*, 2> rowLabels;
  int firstSet;  ///< A1 or A3
  bool targets;
};
constexpr std::array kResultFrames{
    ResultFrame{"Frame3",
                {{{"Label10", "38.2%", 720, 465},
                  {"Label11", "50%", 2160, 315},
                  {"Label12", "61.8%", 3600, 465}}},
                {"Label13", "Label14"},
                1,
                false},
    ResultFrame{"Frame4",
                {{{"Label21", "38.2%", 720, 465},
                  {"Label22", "50%", 2160, 315},
                  {"Label23", "61.8%", 3600, 465}}},
                {"Label24", "Label28"},
                3,
                false},
    ResultFrame{"Frame5",
                {{{"Label42", "1:1", 825, 255},
                  {"Label41", "1.382%", 2040, 555},
                  {"Label40", "1.618%", 3555, 555}}},
                {"Label39", "Label35"},
                1,
                true},
    ResultFrame{"Frame6",
                {{{"Label53", "1:1", 825, 255},
                  {"Label52", "1.382%", 2040, 555},
                  {"Label51", "1.618%", 3555, 555}}},
                {"Label50", "Label46"},
                3,
                true},
};

constexpr std::array<Colour, 4> kLevelColours{
    {{0x000000FF}, {0x00FF0000}, {0x00FF00FF}, {0x0000FFFF}}};
constexpr std::array<const char*, 3> kTargetBoxEndings{"E1", "E1382", "E1618"};

void addResultRow(Designs& controls, const ResultFrame& frame, std::size_t row) {
  constexpr std::array<float, 3> kResultLefts{480, 1920, 3360};
  constexpr std::array<float, 3> kBoxLefts{1500, 2960, 4380};
  const float top = row == 0 ? 480 : 840;
  const int number = frame.firstSet + static_cast<int>(row);
  const std::string set = "A" + std::to_string(number);
  controls.push_back(label(frame.rowLabels.at(row), frame.frame, set + ":", {120, top, 240, 195}));
  for (std::size_t i = 0; i < kResultLefts.size(); ++i) {
    const std::string name = "lbl" + set + (frame.targets ? "T" : "R") + std::to_string(i + 1);
    // Said without the header's stray percent sign: the targets are multiples of the move.
    constexpr std::array<const char*, 3> kMultiples{"1:1", "1.382", "1.618"};
    const std::string said = frame.targets ? set + " target " + kMultiples.at(i)
                                           : set + " retracement " + frame.headers.at(i).caption;
    controls.push_back(meaning(
        backColor(
            foreColor(label(name, frame.frame, "", {kResultLefts.at(i), top, 975, 285}, kResult),
                      kLevelColours.at(static_cast<std::size_t>(number) - 1)),
            kLightGrey),
        said));
    if (!frame.targets) {
      continue;
    }
    const std::string box = "chk" + set + kTargetBoxEndings.at(i);
    // One box is narrower than its neighbours.
    const float width = box == "chkA2E1618" ? 240 : 255;
    controls.push_back(
        meaning(design(Kind::CheckBox, box, frame.frame, "", {kBoxLefts.at(i), top, width, 255}),
                "Show " + said));
  }
}

void addResultFrames(Designs& controls) {
  for (const ResultFrame& frame : kResultFrames) {
    for (const Header& header : frame.headers) {
      controls.push_back(label(header.name, frame.frame, header.caption,
                               {header.left, 240, header.width, 195}, kHeader));
    }
    addResultRow(controls, frame, 0);
    addResultRow(controls, frame, 1);
  }
}

void addCommands(Designs& controls) {
  const auto at = [](float left, float top) { return Place{left, top, 945, 375}; };
  controls.insert(controls.end(),
                  {
                      design(Kind::PushCheckBox, "chkShowA1", "", "Show A1", at(120, 7440)),
                      design(Kind::PushCheckBox, "chkShowA2", "", "Show A2", at(1200, 7440)),
                      design(Kind::PushCheckBox, "chkShowA3", "", "Show A3", at(2280, 7440)),
                      design(Kind::PushCheckBox, "chkShowA4", "", "Show A4", at(3360, 7440)),
                      pilesUp(design(Kind::Button, "cmdChart", "", "Draw Chart", at(120, 7920))),
                      design(Kind::Button, "cmdCalculate", "", "Calculate", at(1200, 7920)),
                      design(Kind::Button, "cmdClear", "", "Clear", at(2280, 7920)),
                  });
}

struct ReadoutRow {
  const char* label;
  const char* caption;
  const char* value;
  float width;
  const char* meaning;
};
constexpr std::array kReadoutRows{
    ReadoutRow{"Label15", "Date:", "lblDate", 855, "Date of the bar"},
    ReadoutRow{"Label19", "Open:", "lblOpen", 735, "Open"},
    ReadoutRow{"Label18", "High:", "lblHigh", 735, "High"},
    ReadoutRow{"Label17", "Low:", "lblLow", 735, "Low"},
    ReadoutRow{"Label16", "Close:", "lblClose", 735, "Close"},
};

void addChart(Designs& controls) {
  controls.push_back(meaning(
      backColor(
          foreColor(design(Kind::PictureBox, "picChart", "", "", {4800, 720, 6015, 7575}), kWhite),
          kBlack),
      "Price chart"));
  float top = 0;
  for (const ReadoutRow& row : kReadoutRows) {
    controls.push_back(
        backColor(label(row.label, "picChart", row.caption, {0, top, 615, 210}, kReadout), kBlack));
    controls.push_back(meaning(
        backColor(label(row.value, "picChart", "", {600, top, row.width, 210}, kReadout), kBlack),
        row.meaning));
    top += 225;
  }
  controls.push_back(
      foreColor(label("Label20", "picChart", "Y:", {3000, 0, 150, 195}, kOverChart), kWhite));
  controls.push_back(meaning(
      foreColor(label("lblCurrent", "picChart", "", {3240, 0, 1095, 255}, kOverChart), kWhite),
      "Price at the pointer"));
}

}  // namespace

WindowDesign mainWindowDesign() {
  return {.name = "frmQuintara",
          .caption = "Quintara - Version 2.00.01",
          .scaleWidth = 10815,
          .scaleHeight = 8385};
}

std::vector<ControlDesign> mainWindowControls() {
  Designs controls;
  controls.reserve(110);
  addTopBar(controls);
  addInputFrames(controls);
  addResultFrames(controls);
  addCommands(controls);
  addChart(controls);
  return controls;
}

std::vector<std::string> mainWindowTabOrder() {
  return {"txtTicker",   "txtA1",     "txtA2",        "txtB1",      "txtC1",        "txtA3",
          "txtA4",       "txtB2",     "txtC2",        "chkShowA1",  "chkShowA2",    "chkShowA3",
          "chkShowA4",   "cmdChart",  "cmdCalculate", "cmdClear",   "cboChartType", "cboDuration",
          "cboInterval", "cmdExpand", "cmdSupress",   "cmdHelp",    "txtClose",     "picChart",
          "chkA1E1",     "chkA2E1",   "chkA1E1382",   "chkA2E1382", "chkA1E1618",   "chkA2E1618",
          "chkA3E1",     "chkA4E1",   "chkA3E1382",   "chkA4E1382", "chkA3E1618",   "chkA4E1618"};
}

}  // namespace quintara
