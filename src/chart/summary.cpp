#include "chart/summary.hpp"

#include "chart/draw_chart.hpp"
#include "values/text.hpp"

namespace quintara {

std::string chartSummary(const ChartState& state) {
  // Before the first series a box ticked too early can draw the axes alone.
  if (!state.colCandles || state.colCandles->Count() == 0) {
    return "No bars";
  }
  const Candle& newest = state.colCandles->Item(1);
  std::string text = state.sDrawnTicker + ": " + std::to_string(state.iShown) + " bars shown";
  if (state.iShown >= 1) {
    const Candle& oldest = state.colCandles->Item(static_cast<std::size_t>(state.iShown));
    text += ", " + oldest.sDate + " to " + newest.sDate;
  }
  return text + ", prices " + defaultText(state.sngShownMin) + " to " +
         defaultText(state.sngShownMax) + ", newest close " + defaultText(newest.dClose);
}

void drawAndDescribe(ChartState& state, PictureBox& picChart,
                     const std::function<std::string()>& more) {
  DrawChart(state, picChart);
  if (state.hasChart()) {
    picChart.setDescription(chartSummary(state) + (more ? more() : ""));
  }
}

}  // namespace quintara
