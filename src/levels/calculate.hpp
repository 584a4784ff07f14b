#pragma once

#include "data/chart_state.hpp"
#include "levels/level_table.hpp"

namespace quintara {

/// Level `index` (0 to 2: 38.2 %, 50 %, 61.8 %) of the move from A to B, drawn back from B.
/// All prices; rounded to three decimals, halves to even. Throws Overflow.
float retracement(float A, float B, std::size_t index);

/// Target `index` (0 to 2: 1, 1.382 and 1.618 times the move from A to B) projected from C.
float target(float A, float B, float C, std::size_t index);

/// The Calculate button: reads the boxes, fills the labels and rows of every set whose points are
/// given (above 0), and may stretch the chart's range. Draws nothing. Throws Overflow at the step
/// that fails; what was written before stays.
void cmdCalculate_Click(ChartState& state, LevelTable& sngLevels, const PointBoxes& boxes,
                        const PointSets& sets);

}  // namespace quintara
