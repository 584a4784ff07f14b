#pragma once

#include "data/chart_state.hpp"
#include "platform/platform.hpp"
#include "values/steps.hpp"

namespace quintara {

/// The chart area changed its size: works out the bars that fit, their range, and redraws with
/// level lines. Nothing while a drawing is in progress (or one failed) or without a chart; a step
/// that raises a run-time error is skipped and the next one carried out.
void picChart_Resize(ChartState& state, const DrawingSurface& picChart, const Clock& clock,
                     const Steps& redraw);

}  // namespace quintara
