#include "levels/level_lines.hpp"

#include <string>

#include "chart/draw_chart.hpp"
#include "chart/grid.hpp"
#include "chart/summary.hpp"
#include "data/bar_positions.hpp"
#include "levels/range_for_levels.hpp"
#include "values/text.hpp"

namespace quintara {

namespace {

std::array<bool, 3> tickedTargets(const PointSet& set) {
  std::array<bool, 3> ticked{};
  for (std::size_t i = 0; i < ticked.size(); ++i) {
    ticked[i] = set.chkTargets[i]->Value() != 0;
  }
  return ticked;
}

void drawSet(DrawingSurface& picChart, const LevelTable& sngLevels, const PointSet& set) {
  if (set.chkShow->Value() != 1) {
    return;
  }
  DrawLine(picChart, sngLevels[set.retracementRow], sngLevels[set.targetRow],
           set.lblRetracements[0]->ForeColor(), tickedTargets(set));
}

/// The levels of a kind that lie on the chart, " 1, 2" after what they are called.
std::string said(const ChartState& state, const char* kind, const Levels& levels,
                 const std::array<bool, 3>& selected) {
  std::string text;
  for (std::size_t i = 0; i < levels.size(); ++i) {
    if (selected[i] && isOnChart(state, levels[i])) {
      text += (text.empty() ? kind : ",") + (' ' + defaultText(levels[i]));
    }
  }
  return text;
}

}  // namespace

std::string shownLevels(const ChartState& state, const LevelTable& sngLevels,
                        const PointSets& sets) {
  std::string text;
  for (std::size_t i = 0; i < sets.size(); ++i) {
    const PointSet& set = sets[i];
    if (set.chkShow->Value() != 1) {
      continue;
    }
    const std::string name = "; A" + std::to_string(i + 1);
    for (const std::string& levels :
         {said(state, " retracements", sngLevels[set.retracementRow], {true, true, true}),
          said(state, " targets", sngLevels[set.targetRow], tickedTargets(set))}) {
      text += levels.empty() ? "" : name + levels;
    }
  }
  return text;
}

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
  steps.emplace_back([&state, &sngLevels, &sets, &picChart] {
    drawAndDescribe(state, picChart, [&] { return shownLevels(state, sngLevels, sets); });
  });
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
