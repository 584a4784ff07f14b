#pragma once

#include "data/chart_state.hpp"
#include "platform/platform.hpp"

namespace quintara {

/// Finds the highest high and lowest low of the shown bars, as the range and as its copy. It reads
/// rows, from the first that is a bar up to index `iShown`: one bar more than the chart draws when
/// today's quote counts. Needs `iShown` set for the current series.
/// Throws SubscriptOutOfRange or TypeMismatch at a bad row and then leaves the copy alone.
void MaxMin(ChartState& state, Date today);

}  // namespace quintara
