#include "app/main_window.hpp"

#include <string>
#include <utility>

#include "app/layout.hpp"
#include "chart/pointer_stops.hpp"
#include "chart/resize.hpp"
#include "chart/spacing.hpp"
#include "commands/choices.hpp"
#include "interaction/help.hpp"
#include "interaction/picking.hpp"
#include "levels/calculate.hpp"
#include "levels/clear.hpp"
#include "levels/level_lines.hpp"

namespace quintara {

namespace {

const char* const kHelpFile = "Helpfile.hlp";

std::unique_ptr<Window> createWindow(Toolkit& toolkit) {
  std::unique_ptr<Window> window = toolkit.newWindow(mainWindowDesign());
  for (const ControlDesign& design : mainWindowControls()) {
    window->add(design);
  }
  window->setTabOrder(mainWindowTabOrder());
  return window;
}

PointBoxes pointBoxes(const Window& window) {
  constexpr std::array<const char*, kPointBoxes> kNames{"txtA1", "txtA2", "txtA3", "txtA4",
                                                        "txtB1", "txtB2", "txtC1", "txtC2"};
  PointBoxes boxes{};
  for (std::size_t i = 0; i < kPointBoxes; ++i) {
    boxes.at(i) = &window.control<TextBox>(kNames.at(i));
  }
  return boxes;
}

PointSets pointSets(const Window& window) {
  constexpr std::array<std::size_t, kSets> kRetracementRows{0, 1, 4, 5};
  constexpr std::array<std::size_t, kSets> kTargetRows{2, 3, 6, 7};
  constexpr std::array<const char*, 3> kBoxEndings{"E1", "E1382", "E1618"};
  PointSets sets{};
  for (std::size_t s = 0; s < kSets; ++s) {
    const std::string name = "A" + std::to_string(s + 1);
    const std::string label = "lbl" + name;
    PointSet& set = sets.at(s);
    set.chkShow = &window.control<CheckBox>("chkShow" + name);
    for (std::size_t i = 0; i < 3; ++i) {
      const char level = static_cast<char>('1' + i);
      set.chkTargets.at(i) = &window.control<CheckBox>("chk" + name + kBoxEndings.at(i));
      set.lblRetracements.at(i) = &window.control<Label>(label + "R" + level);
      set.lblTargets.at(i) = &window.control<Label>(label + "T" + level);
    }
    set.retracementRow = kRetracementRows.at(s);
    set.targetRow = kTargetRows.at(s);
  }
  return sets;
}

Readout readoutOf(const Window& window) {
  return {window.control<Label>("lblDate"), window.control<Label>("lblOpen"),
          window.control<Label>("lblHigh"), window.control<Label>("lblLow"),
          window.control<Label>("lblClose")};
}

}  // namespace

frmQuintara::frmQuintara(const Platform& platform, QuoteHosts hosts)
    : platform_(platform),
      window_(createWindow(platform.toolkit)),
      progress_(platform.toolkit, platform.screen),
      source_{platform.http, platform.clock, std::move(hosts)},
      picChart_(control<PictureBox>("picChart")),
      boxes_(pointBoxes(*window_)),
      sets_(pointSets(*window_)),
      readout_(readoutOf(*window_)),
      drawChartControls_{control<TextBox>("txtTicker"),
                         picChart_,
                         control<TextBox>("txtClose"),
                         readout_,
                         boxes_,
                         sets_,
                         progress_,
                         platform.messageBox,
                         platform.locale},
      pointerControls_{readout_, control<Label>("lblCurrent"), platform.screen},
      redraw_(redrawSteps(state_, sngLevels_, sets_, picChart_)) {
  connectCommands();
  connectChart();
  connectLevels();
  connectPointer();
  Form_Load();
}

void frmQuintara::connectCommands() {
  control<Button>("cmdChart").Click = [this] {
    cmdChart_Click(state_, drawChartControls_, source_);
  };
  control<Button>("cmdCalculate").Click = [this] {
    cmdCalculate_Click(state_, sngLevels_, boxes_, sets_);
  };
  control<Button>("cmdClear").Click = [this] { cmdClear_Click(state_, boxes_, sets_, picChart_); };
  control<Button>("cmdHelp").Click = [this] {
    cmdHelp_Click(kHelpFile, window_->Caption(), platform_.help, platform_.messageBox);
  };
  window_->Help = control<Button>("cmdHelp").Click;
}

void frmQuintara::connectChart() {
  auto& cboDuration = control<ComboBox>("cboDuration");
  auto& cboInterval = control<ComboBox>("cboInterval");
  cboDuration.Click = [this, &cboDuration] { cboDuration_Click(state_, cboDuration); };
  cboInterval.Click = [this, &cboInterval, &cboDuration] {
    cboInterval_Click(state_, cboInterval, cboDuration);
  };
  window_->Resize = [this] { Form_Resize(); };
  picChart_.Resize = [this] { picChart_Resize(state_, picChart_, platform_.clock, redraw_); };
  control<Button>("cmdExpand").Click = [this] {
    Expand(state_, picChart_, platform_.clock, redraw_);
  };
  control<Button>("cmdSupress").Click = [this] {
    Suppress(state_, picChart_, platform_.clock, redraw_);
  };
}

void frmQuintara::connectLevels() {
  auto& cboChartType = control<ComboBox>("cboChartType");
  cboChartType.Click = [this, &cboChartType] { cboChartType_Click(state_, cboChartType, redraw_); };
  const auto showLines = [this] { ShowLines(state_, redraw_); };
  for (const PointSet& set : sets_) {
    set.chkShow->Click = showLines;
    for (CheckBox* box : set.chkTargets) {
      box->Click = showLines;
    }
  }
}

void frmQuintara::connectPointer() {
  picChart_.MouseMove = [this](const MouseEvent& event) {
    picChart_MouseMove(state_, drag_, pointerControls_, event);
  };
  picChart_.MouseDown = [this](const MouseEvent& event) {
    picChart_MouseDown(state_, drag_, readout_, platform_.screen, control<Image>("imgDragDrop2"),
                       event);
  };
  picChart_.MouseUp = [this](const MouseEvent& event) {
    picChart_MouseUp(drag_, picChart_, platform_.screen, event);
  };
  picChart_.PointerStops = [this] { return pointerStops(state_); };
  window_->MouseMove = [this](const MouseEvent&) {
    Form_MouseMove(state_, drag_, pointerControls_);
  };
  for (const char* name : {"Frame1", "Frame2", "Frame3", "Frame4", "Frame5", "Frame6"}) {
    control<Frame>(name).MouseMove = [this](const MouseEvent&) {
      Frame_MouseMove(state_, drag_, pointerControls_);
    };
  }
  for (const DropTarget& target : kDropTargets) {
    auto& box = control<TextBox>(target.box);
    box.MouseMove = [this, &box, &target](const MouseEvent&) {
      dropInto(box, target, drag_, platform_.screen);
    };
  }
}

void frmQuintara::Form_Load() {
  auto& cboChartType = control<ComboBox>("cboChartType");
  for (const char* type : {"Candle", "Line", "Bar"}) {
    cboChartType.AddItem(type);
  }
  cboChartType.setListIndex(0);
  state_.iChartType = 0;
  auto& cboDuration = control<ComboBox>("cboDuration");
  for (const char* span : {"6 months", "12 months", "18 months", "24 months"}) {
    cboDuration.AddItem(span);
  }
  cboDuration.setListIndex(1);
  state_.iDuration = 1;
  auto& cboInterval = control<ComboBox>("cboInterval");
  for (const char* interval : {"Daily", "Weekly", "Monthly"}) {
    cboInterval.AddItem(interval);
  }
  cboInterval.setListIndex(0);
  state_.iInterval = 0;
  state_.iSpacing = 3;
  state_.sRows.assign(1, "");
  Form_Resize();
}

void frmQuintara::Form_Resize() {
  // A window smaller than the calculator leaves no room; the chart area then keeps its size.
  runSkippingFailures({[this] {
    picChart_.Move(picChart_.Left(), picChart_.Top(), window_->ScaleWidth() - picChart_.Left(),
                   window_->ScaleHeight() - picChart_.Top());
  }});
}

}  // namespace quintara
