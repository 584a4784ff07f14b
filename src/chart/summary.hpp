#pragma once

#include <string>

#include "data/chart_state.hpp"

namespace quintara {

/// What the chart of a ticker shows, in one sentence for a screen reader: bars shown, date span,
/// price range, newest close.
std::string chartSummary(const ChartState& state, const std::string& ticker);

}  // namespace quintara
