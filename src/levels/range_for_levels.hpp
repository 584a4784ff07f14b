#pragma once

#include <cstddef>

#include "data/chart_state.hpp"
#include "levels/level_table.hpp"

namespace quintara {

// How levels move the chart's range, `sngMin` to `sngMax`. Two rules, at two times:
//
// Calculate (stretchRange): the range as it stands makes room for the middle target of a set just
// worked out, if that lies outside. Upwards for A1 and A2, to 1.03 times the target; downwards for
// A3, to 0.97 times; never for A4.
//
// Every redraw with level lines (RecalculateMaxMin): the range starts anew from the shown bars' and
// is stretched to the ticked targets of the shown sets, without a margin. Upwards for all of them,
// downwards for those above 0.
//
// Calculate draws nothing, and the next redraw with level lines starts anew. So its rule shows in
// one drawing only, which takes the range as it stands: the one that ends the Clear button, when no
// box had been ticked.

/// `targets` are the new ones of set number `set`, 0 to 3 for A1 to A4. Throws Overflow.
void stretchRange(ChartState& state, std::size_t set, const Levels& targets);

/// Reads targets as their labels show them, by the numeric-prefix rule: under a comma locale their
/// whole-number part. Needs MaxMin to have run for the shown bars.
/// Throws Overflow for a caption beyond single range; the range stays as far as it got.
void RecalculateMaxMin(ChartState& state, const PointSets& sets);

}  // namespace quintara
