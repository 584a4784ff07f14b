#pragma once

#include <vector>

#include "data/chart_state.hpp"
#include "platform/controls.hpp"

namespace quintara {

/// Where the keyboard's pointer stops: on each bar drawn, newest first, at the height of its close.
/// None without a chart.
std::vector<PointerStop> pointerStops(const ChartState& state);

}  // namespace quintara
