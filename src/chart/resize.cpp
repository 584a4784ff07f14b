#include "chart/resize.hpp"

#include "chart/price_range.hpp"
#include "chart/shown_bars.hpp"

namespace quintara {

void picChart_Resize(ChartState& state, const DrawingSurface& picChart, const Clock& clock,
                     const Steps& redraw) {
  if (state.bDrawing || !state.hasChart()) {
    return;
  }
  std::int16_t bars = 0;
  runSkippingFailures({
      [&] { bars = barsThatFit(picChart.ScaleWidth(), state.iSpacing); },
      [&] { bars = withinSeries(bars, state.candles().Count()); },
      [&] { state.iShown = bars; },
      [&] { MaxMin(state, clock.today()); },
  });
  runSkippingFailures(redraw);
}

}  // namespace quintara
