#pragma once

#include "data/chart_state.hpp"
#include "levels/level_table.hpp"

namespace quintara {

/// Empties the calculator: labels, Show boxes, point boxes, target boxes, in this order. Unticking
/// a box raises its handler, so each box that was ticked redraws the chart; an error in that
/// redraw ends Clear there. The level table stays.
void Clear(const PointBoxes& boxes, const PointSets& sets);

/// The Clear button: clears, then draws the chart once more in the range as it stands.
void cmdClear_Click(ChartState& state, const PointBoxes& boxes, const PointSets& sets,
                    PictureBox& picChart);

}  // namespace quintara
