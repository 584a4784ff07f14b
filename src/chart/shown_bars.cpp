#include "chart/shown_bars.hpp"

#include <algorithm>
#include <cstdlib>

#include "values/numbers.hpp"

namespace quintara {

std::int16_t barsThatFit(float scaleWidth, std::int16_t spacing) {
  return toInt16(std::abs(toInt16((Single(scaleWidth) / spacing).value())));
}

std::int16_t withinSeries(std::int16_t bars, std::size_t count) {
  return static_cast<std::int16_t>(std::min<std::int64_t>(bars, std::int64_t(count) - 1));
}

void showWhatFits(ChartState& state, const DrawingSurface& picChart) {
  const std::int16_t bars = barsThatFit(picChart.ScaleWidth(), state.iSpacing);
  state.iShown = withinSeries(bars, state.candles().Count());
}

}  // namespace quintara
