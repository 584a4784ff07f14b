#include "chart/draw_chart.hpp"

#include "chart/grid.hpp"
#include "values/numbers.hpp"

namespace quintara {

namespace {

enum ChartType : std::int16_t { kCandles = 0, kLine = 1, kBars = 2 };

/// Pixels kept free above the highest price, for the price at the pointer, and below the lowest,
/// for the dates.
constexpr double kHeadroom = 90;
constexpr double kFootroom = 25;

void setChartScale(ChartState& state, DrawingSurface& picChart) {
  picChart.setScaleModePixels();
  const std::int16_t height = toInt16(picChart.ScaleHeight());
  if (height == 0) {
    throw RuntimeError(ErrorKind::DivisionByZero);
  }
  const double max = state.sngMax;
  const double min = state.sngMin;
  state.sngPricePerPixel = toSingle((max - min) / height);
  const double p = state.sngPricePerPixel;
  picChart.Scale(picChart.ScaleWidth(), toSingle(max + kHeadroom * p), 0,
                 toSingle(min - kFootroom * p));
}

void drawClosingLine(const ChartState& state, DrawingSurface& picChart) {
  const int shown = state.iShown;
  for (int i = 2; i <= shown; ++i) {
    const Candle& newer = state.candles().Item(static_cast<std::size_t>(i) - 1);
    const Candle& older = state.candles().Item(static_cast<std::size_t>(i));
    picChart.Line(newer.Left, newer.dClose, older.Left, older.dClose, kBarColour);
  }
}

void drawEach(const ChartState& state, DrawingSurface& picChart,
              void (Candle::*draw)(DrawingSurface&) const) {
  const int shown = state.iShown;
  for (int i = 1; i <= shown; ++i) {
    (state.candles().Item(static_cast<std::size_t>(i)).*draw)(picChart);
  }
}

}  // namespace

bool isOnChart(const ChartState& state, float price) {
  const double p = state.sngPricePerPixel;
  return price <= state.sngMax + kHeadroom * p && price >= state.sngMin - kFootroom * p;
}

void DrawChart(ChartState& state, DrawingSurface& picChart) {
  if (!state.hasChart()) {
    return;
  }
  // No guard object: after a failed drawing the flag has to stay set.
  state.bDrawing = true;
  picChart.Cls();
  setChartScale(state, picChart);
  Grid(state, picChart);
  switch (state.iChartType) {
    case kCandles:
      drawEach(state, picChart, &Candle::Draw);
      break;
    case kLine:
      drawClosingLine(state, picChart);
      break;
    case kBars:
      drawEach(state, picChart, &Candle::DrawBar);
      break;
  }
  state.bDrawing = false;
}

}  // namespace quintara
