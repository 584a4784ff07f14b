#include "levels/range_for_levels.hpp"

#include <algorithm>

#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara {

void stretchRange(ChartState& state, std::size_t set, const Levels& targets) {
  const float middle = targets[1];
  if (set < 2 && middle > state.sngMax) {
    state.sngMax = toSingle(middle * 1.03);
  }
  if (set == 2 && middle < state.sngMin) {
    state.sngMin = toSingle(middle * 0.97);
  }
}

void RecalculateMaxMin(ChartState& state, const PointSets& sets) {
  state.sngMax = state.sngShownMax;
  state.sngMin = state.sngShownMin;
  for (const PointSet& set : sets) {
    if (set.chkShow->Value() != 1) {
      continue;
    }
    for (std::size_t i = 0; i < set.lblTargets.size(); ++i) {
      if (set.chkTargets[i]->Value() != 1) {
        continue;
      }
      const double caption = readLeadingNumber(set.lblTargets[i]->Caption());
      const float level = toSingle(caption);
      state.sngMax = std::max(state.sngMax, level);
      if (caption > 0) {
        state.sngMin = std::min(state.sngMin, level);
      }
    }
  }
}

}  // namespace quintara
