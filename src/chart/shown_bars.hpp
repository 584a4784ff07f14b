#pragma once

#include <cstddef>
#include <cstdint>

#include "data/chart_state.hpp"
#include "platform/drawing_surface.hpp"

namespace quintara {

/// Bars that fit: width by spacing, in single precision and rounded half to even, without its
/// sign (a chart's width is counted leftwards). Throws Overflow beyond 16 bits.
std::int16_t barsThatFit(float scaleWidth, std::int16_t spacing);

/// At most all bars of the series but the oldest, which is never shown; -1 for an empty series.
std::int16_t withinSeries(std::int16_t bars, std::size_t count);

/// Sets `iShown` to the bars of the series that fit into the chart area. Throws Overflow, or
/// ObjectNotSet without a series.
void showWhatFits(ChartState& state, const DrawingSurface& picChart);

}  // namespace quintara
