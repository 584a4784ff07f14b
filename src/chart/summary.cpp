#include "chart/summary.hpp"

#include "values/text.hpp"

namespace quintara {

std::string chartSummary(const ChartState& state, const std::string& ticker) {
  // Before the first series a box ticked too early can draw the axes alone.
  if (!state.colCandles || state.colCandles->Count() == 0) {
    return "No bars";
  }
  const Candle& newest = state.colCandles->Item(1);
  std::string text = ticker + ": " + std::to_string(state.iShown) + " bars shown";
  if (state.iShown >= 1) {
    const Candle& oldest = state.colCandles->Item(static_cast<std::size_t>(state.iShown));
    text += ", " + oldest.sDate + " to " + newest.sDate;
  }
  return text + ", prices " + defaultText(state.sngMin) + " to " + defaultText(state.sngMax) +
         ", newest close " + defaultText(newest.dClose);
}

}  // namespace quintara
