#pragma once

#include <memory>
#include <string_view>

#include "commands/draw_chart_command.hpp"
#include "data/chart_state.hpp"
#include "interaction/drag_state.hpp"
#include "interaction/pointer_readout.hpp"
#include "levels/level_table.hpp"
#include "platform/platform.hpp"
#include "values/steps.hpp"

namespace quintara {

/// The main window: holds the controls and all state, and connects them. What a handler does lives
/// in the subsystems.
class frmQuintara {
 public:
  /// Creates the window and runs Form_Load; it is not shown yet.
  frmQuintara(const Platform& platform, QuoteHosts hosts);
  frmQuintara(const frmQuintara&) = delete;
  frmQuintara& operator=(const frmQuintara&) = delete;

  void Show() { window_->Show(); }

 private:
  void Form_Load();
  void Form_Resize();

  void connectCommands();
  void connectChart();
  void connectLevels();
  void connectPointer();

  template <class Kind>
  [[nodiscard]] Kind& control(std::string_view name) const {
    return window_->control<Kind>(name);
  }

  Platform platform_;
  std::unique_ptr<Window> window_;
  frmGettingData progress_;
  QuoteSource source_;

  ChartState state_;
  LevelTable sngLevels_{};
  DragState drag_;

  PictureBox& picChart_;
  PointBoxes boxes_;
  PointSets sets_;
  Readout readout_;
  DrawChartControls drawChartControls_;
  PointerControls pointerControls_;
  Steps redraw_;
};

}  // namespace quintara
