#include "chart/spacing.hpp"

#include "chart/price_range.hpp"
#include "chart/shown_bars.hpp"
#include "data/bar_positions.hpp"

namespace quintara {

namespace {

constexpr std::int16_t kNarrowest = 1;
constexpr std::int16_t kWidest = 5;

void layOut(ChartState& state) {
  BarPositions positions(state);
  const std::int16_t count = toInt16(static_cast<double>(state.candles().Count()));
  for (int i = 1; i <= count; ++i) {
    state.candles().Item(static_cast<std::size_t>(i)).Left = positions.take();
  }
}

void showAgain(ChartState& state, const DrawingSurface& picChart, const Clock& clock,
               const Steps& redraw) {
  layOut(state);
  showWhatFits(state, picChart);
  MaxMin(state, clock.today());
  run(redraw);
}

}  // namespace

void Expand(ChartState& state, const DrawingSurface& picChart, const Clock& clock,
            const Steps& redraw) {
  if (!state.hasChart() || state.iSpacing >= kWidest) {
    return;
  }
  ++state.iSpacing;
  if (state.iSpacing > kNarrowest) {
    state.bSuppressed = false;
  }
  showAgain(state, picChart, clock, redraw);
}

void Suppress(ChartState& state, const DrawingSurface& picChart, const Clock& clock,
              const Steps& redraw) {
  if (!state.hasChart() || state.iSpacing <= kNarrowest) {
    return;
  }
  --state.iSpacing;
  if (state.iSpacing < 2) {
    state.bSuppressed = true;
  }
  showAgain(state, picChart, clock, redraw);
}

}  // namespace quintara
