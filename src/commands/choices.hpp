#pragma once

#include "data/chart_state.hpp"
#include "platform/controls.hpp"
#include "values/steps.hpp"

namespace quintara {

// The boxes beside the ticker: each keeps its list position in the state.

void cboDuration_Click(ChartState& state, const ComboBox& cboDuration);

/// Weekly and monthly bars have spans of their own: the span box is enabled for daily ones only.
void cboInterval_Click(ChartState& state, const ComboBox& cboInterval, ComboBox& cboDuration);

/// Runs the redraw sequence if there is a chart; a run-time error ends it silently.
void cboChartType_Click(ChartState& state, const ComboBox& cboChartType, const Steps& redraw);

}  // namespace quintara
