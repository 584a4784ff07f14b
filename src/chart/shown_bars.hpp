#pragma once

#include <cstddef>
#include <cstdint>

#include "data/chart_state.hpp"
#include "platform/drawing_surface.hpp"

namespace quintara {

/// Bars that fit: width by spacing, in single precision and rounded half to even, without its
/// sign (a chart's width is counted leftwards). Throws Overflow beyond 16 bits.
std::int16_t barsThatFit(float scaleWidth, std::int16_t spacing);

/// At most all bars of the series but the oldest, which is never drawn; -1 for an empty series.
/// MaxMin reads rows up to index `iShown`. When today's quote, row 0, is a bar, that is one bar
/// more than is drawn; were all bars drawn, it would read the empty row behind the last one and
/// fail.
std::int16_t withinSeries(std::int16_t bars, std::size_t count);

/// Sets `iShown` to the bars of the series that fit into the chart area. Throws Overflow, or
/// ObjectNotSet without a series.
void showWhatFits(ChartState& state, const DrawingSurface& picChart);

}  // namespace quintara
