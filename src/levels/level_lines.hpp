#pragma once

#include <array>
#include <string>

#include "data/chart_state.hpp"
#include "levels/level_table.hpp"
#include "platform/drawing_surface.hpp"
#include "values/steps.hpp"

namespace quintara {

/// Draws one set's levels: the retracements AR solid, then the targets AT selected by T dashed.
void DrawLine(DrawingSurface& picChart, const Levels& AR, const Levels& AT, Colour lColor,
              const std::array<bool, 3>& T);

/// The redraw sequence: widen the range, draw the chart, then the lines of A1 to A4, each a step.
/// A set is drawn when its Show box is 1, in the colour of its first retracement label. The steps
/// refer to their arguments.
Steps redrawSteps(ChartState& state, const LevelTable& sngLevels, const PointSets& sets,
                  PictureBox& picChart);

/// The levels whose lines are on the chart as it was drawn last, by set and kind, for a screen
/// reader: "; A1 retracements 28.287, 27.31; A1 targets 36.08". Empty if there are none.
std::string shownLevels(const ChartState& state, const LevelTable& sngLevels,
                        const PointSets& sets);

/// Runs the redraw sequence if there is a chart. Every level check box calls it.
void ShowLines(const ChartState& state, const Steps& redraw);

}  // namespace quintara
