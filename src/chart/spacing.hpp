#pragma once

#include "data/chart_state.hpp"
#include "platform/platform.hpp"
#include "values/steps.hpp"

namespace quintara {

/// One pixel more between bars, up to 5: fewer, further apart. Lays the series out again and
/// redraws with level lines. Nothing without a chart or at the limit.
/// Traps nothing; the spacing is changed before anything can fail.
void Expand(ChartState& state, const DrawingSurface& picChart, const Clock& clock,
            const Steps& redraw);

/// One pixel less between bars, down to 1: more, closer together. Otherwise as Expand.
void Suppress(ChartState& state, const DrawingSurface& picChart, const Clock& clock,
              const Steps& redraw);

}  // namespace quintara
