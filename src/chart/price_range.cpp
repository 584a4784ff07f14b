#include "chart/price_range.hpp"

#include <algorithm>

#include "data/rows.hpp"

namespace quintara {

void MaxMin(ChartState& state, Date today) {
  state.sngMax = 0;
  state.sngMin = 2'000'000;
  const int last = state.iShown;
  for (int i = static_cast<int>(firstBarRow(state, today)); i <= last; ++i) {
    const auto index = static_cast<std::size_t>(i);
    if (index >= state.sRows.size()) {
      throw RuntimeError(ErrorKind::SubscriptOutOfRange);
    }
    const RowFields fields(state.sRows[index]);
    state.sngMax = std::max(state.sngMax, fields.number(kHigh));
    state.sngMin = std::min(state.sngMin, fields.number(kLow));
  }
  state.sngShownMax = state.sngMax;
  state.sngShownMin = state.sngMin;
}

}  // namespace quintara
