#include "chart/shown_bars.hpp"

#include "values/numbers.hpp"

namespace quintara {

std::int16_t barsThatFit(float scaleWidth, std::int16_t spacing) {
  const std::int16_t bars = toInt16((Single(scaleWidth) / spacing).value());
  return bars < 0 ? toInt16(-bars) : bars;
}

std::int16_t withinSeries(std::int16_t bars, std::size_t count) {
  return static_cast<std::size_t>(bars) >= count ? static_cast<std::int16_t>(count - 1) : bars;
}

void showWhatFits(ChartState& state, const DrawingSurface& picChart) {
  const std::int16_t bars = barsThatFit(picChart.ScaleWidth(), state.iSpacing);
  state.iShown = withinSeries(bars, state.candles().Count());
}

}  // namespace quintara
