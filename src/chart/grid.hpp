#pragma once

#include "data/chart_state.hpp"
#include "platform/drawing_surface.hpp"

namespace quintara {

/// Axes, price lines and level lines end here, however wide the chart is.
inline constexpr float kLinesEndX = 1000;

/// Draws axes, dotted price and date grid and their labels in the chart's coordinate system, which
/// must be in force with a solid DrawStyle. A range that is empty at 0 or below gets the two axes
/// only. Throws Overflow, or ObjectNotSet without a series.
void Grid(const ChartState& state, DrawingSurface& picChart);

}  // namespace quintara
