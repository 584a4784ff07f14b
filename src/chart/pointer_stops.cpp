#include "chart/pointer_stops.hpp"

namespace quintara {

std::vector<PointerStop> pointerStops(const ChartState& state) {
  std::vector<PointerStop> stops;
  if (!state.hasChart() || !state.colCandles) {
    return stops;
  }
  const int drawn = std::min<int>(state.iShown, static_cast<int>(state.colCandles->Count()));
  for (int i = 1; i <= drawn; ++i) {
    const Candle& candle = state.colCandles->Item(static_cast<std::size_t>(i));
    stops.push_back({candle.Left, candle.dClose});
  }
  return stops;
}

}  // namespace quintara
