#pragma once

#include "data/chart_state.hpp"
#include "platform/drawing_surface.hpp"

namespace quintara {

/// Repaints the chart area from the state: clears it, sets the chart's coordinate system, draws
/// the grid and the shown bars in the chosen type. Does nothing without a chart.
///
/// Coordinate system, left in force: x counts pixels from the right edge leftwards, y is the price
/// with room for 90 price-per-pixel units above the range and 25 below.
///
/// Throws DivisionByZero for an area of zero height, Overflow, or ObjectNotSet; `bDrawing` then
/// stays True, which keeps the resize handler off until a drawing completes.
void DrawChart(ChartState& state, DrawingSurface& picChart);

/// Whether a price lies within the coordinate system of the last drawing.
bool isOnChart(const ChartState& state, float price);

}  // namespace quintara
