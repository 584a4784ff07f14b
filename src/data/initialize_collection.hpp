#pragma once

#include "data/chart_state.hpp"
#include "platform/platform.hpp"

namespace quintara {

/// Builds the series from the downloaded rows, newest first: item k stands at 40 + (k - 1) times
/// the spacing. The last row, what followed the table's final line feed, is never used.
/// Throws SubscriptOutOfRange, TypeMismatch or Overflow at the first bad row; the bars before it
/// stay in the series.
void InitializeCollection(ChartState& state, Date today);

}  // namespace quintara
