#include "levels/level_lines.hpp"

#include "chart/grid.hpp"
#include "chart/summary.hpp"
#include "data/bar_positions.hpp"
#include "levels/range_for_levels.hpp"

namespace quintara {

namespace {

void drawSet(DrawingSurface& picChart, const LevelTable& sngLevels, const PointSet& set) {
  if (set.chkShow->Value() != 1) {
    return;
  }
  std::array<bool, 3> selected{};
  for (std::size_t i = 0; i < selected.size(); ++i) {
    selected[i] = set.chkTargets[i]->Value() != 0;
  }
  DrawLine(picChart, sngLevels[set.retracementRow], sngLevels[set.targetRow],
           set.lblRetracements[0]->ForeColor(), selected);
}

}  // namespace

void DrawLine(DrawingSurface& picChart, const Levels& AR, const Levels& AT, Colour lColor,
              const std::array<bool, 3>& T) {
  for (const float level : AR) {
    picChart.Line(kFirstBarLeft, level, kLinesEndX, level, lColor);
  }
  picChart.setDrawStyle(DrawStyle::Dash);
  for (std::size_t i = 0; i < AT.size(); ++i) {
    if (T[i]) {
      picChart.Line(kFirstBarLeft, AT[i], kLinesEndX, AT[i], lColor);
    }
  }
  picChart.setDrawStyle(DrawStyle::Solid);
}

Steps redrawSteps(ChartState& state, const LevelTable& sngLevels, const PointSets& sets,
                  PictureBox& picChart) {
  Steps steps;
  steps.emplace_back([&state, &sets] { RecalculateMaxMin(state, sets); });
  steps.emplace_back([&state, &picChart] { drawAndDescribe(state, picChart); });
  for (const PointSet& set : sets) {
    steps.emplace_back([&picChart, &sngLevels, &set] { drawSet(picChart, sngLevels, set); });
  }
  return steps;
}

void ShowLines(const ChartState& state, const Steps& redraw) {
  if (state.hasChart()) {
    run(redraw);
  }
}

}  // namespace quintara
