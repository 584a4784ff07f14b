#include "commands/choices.hpp"

#include "levels/level_lines.hpp"
#include "values/errors.hpp"

namespace quintara {

void cboDuration_Click(ChartState& state, const ComboBox& cboDuration) {
  state.iDuration = cboDuration.ListIndex();
}

void cboInterval_Click(ChartState& state, const ComboBox& cboInterval, ComboBox& cboDuration) {
  state.iInterval = cboInterval.ListIndex();
  const bool weeklyOrMonthly = state.iInterval == 1 || state.iInterval == 2;
  cboDuration.setEnabled(!weeklyOrMonthly);
}

void cboChartType_Click(ChartState& state, const ComboBox& cboChartType, const Steps& redraw) {
  // Choosing a type never reports.
  trapErrors([&] {
    state.iChartType = cboChartType.ListIndex();
    ShowLines(state, redraw);
  });
}

}  // namespace quintara
