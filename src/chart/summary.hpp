#pragma once

#include <functional>
#include <string>

#include "data/chart_state.hpp"
#include "platform/controls.hpp"

namespace quintara {

/// What the chart shows, in one sentence for a screen reader: ticker, bars shown, date span, the
/// bars' price range, newest close.
std::string chartSummary(const ChartState& state);

/// Repaints the chart area by DrawChart and says to a screen reader what it shows, and what `more`
/// answers after it. Does nothing without a chart. Throws what DrawChart throws; the old
/// description then stays.
void drawAndDescribe(ChartState& state, PictureBox& picChart,
                     const std::function<std::string()>& more = {});

}  // namespace quintara
