#include "chart/grid.hpp"

#include <optional>
#include <string>

#include "data/bar_positions.hpp"
#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara {

namespace {

constexpr Colour kAxisColour{0x00E0E0E0};
constexpr Colour kGridColour{0x00C0C0C0};
constexpr float kAxisX = 2;
constexpr float kAxisBelow = 23;  // pixels from the lowest price down to the date axis
constexpr float kTickBelow = 18;  // and to the upper end of its ticks
constexpr int kMostPriceLines = 1000;

void dottedLine(DrawingSurface& picChart, float x1, float y1, float x2, float y2) {
  picChart.setDrawStyle(DrawStyle::Dot);
  picChart.Line(x1, y1, x2, y2, kGridColour);
  picChart.setDrawStyle(DrawStyle::Solid);
}

/// Where a price label starts: longer numbers further left. None for exactly 10000, which has no
/// label.
std::optional<float> labelX(float price) {
  if (price < 10) {
    return 30.0F;
  }
  if (price < 100) {
    return 20.0F;
  }
  if (price < 1000) {
    return 25.0F;
  }
  if (price < 10000) {
    return 32.0F;
  }
  if (price > 10000) {
    return 40.0F;
  }
  return std::nullopt;
}

void drawPriceLine(DrawingSurface& picChart, float y, Single pricePerPixel) {
  picChart.Line(kAxisX, y, 4, y, kAxisColour);
  dottedLine(picChart, kFirstBarLeft, y, kLinesEndX, y);
  picChart.setCurrentY((y + 10 * pricePerPixel).value());
  if (const auto x = labelX(y)) {
    picChart.setCurrentX(*x);
    picChart.Print(y < 10 ? twoDecimals(y) : printForm(roundHalfEven(y)));
  }
}

/// Returns false for a range in which the lines would never end.
bool drawPriceGrid(const ChartState& state, DrawingSurface& picChart) {
  const Single step = (Single(state.sngMax) - state.sngMin) / 10;
  const Single end = state.sngMax;
  Single y = toSingle(state.sngMin * 1.05);  // the first line stands clear of the date axis
  const auto within = [&] { return step < 0 ? !(y < end) : !(y > end); };
  if (step == 0 && within()) {
    return false;
  }
  for (int lines = 0; within() && lines < kMostPriceLines; ++lines) {
    drawPriceLine(picChart, y.value(), state.sngPricePerPixel);
    const Single next = y + step;
    if (next == y) {
      break;  // the step is lost in the price's precision
    }
    y = next;
  }
  return true;
}

void drawDateGrid(const ChartState& state, DrawingSurface& picChart, float axisY) {
  const std::size_t step = state.bSuppressed ? 60 : 30;
  const std::size_t count = state.candles().Count();
  for (std::size_t i = 10; i <= count; i += step) {
    const Candle& candle = state.candles().Item(i);
    const float middle = (Single(candle.Left) + 1).value();
    const float tickTop = (state.sngMin - kTickBelow * Single(state.sngPricePerPixel)).value();
    picChart.Line(middle, axisY, middle, tickTop, kAxisColour);
    dottedLine(picChart, middle, state.sngMin, middle, state.sngMax);
    picChart.setCurrentX((Single(candle.Left) + 15).value());
    picChart.setCurrentY(state.sngMin);
    picChart.Print(candle.sDate);
  }
}

}  // namespace

void Grid(const ChartState& state, DrawingSurface& picChart) {
  const float axisY = (state.sngMin - kAxisBelow * Single(state.sngPricePerPixel)).value();
  picChart.Line(kAxisX, axisY, kAxisX, toSingle(state.sngMax * 1.1), kAxisColour);
  picChart.Line(kAxisX, axisY, kLinesEndX, axisY, kAxisColour);
  if (drawPriceGrid(state, picChart)) {
    drawDateGrid(state, picChart, axisY);
  }
}

}  // namespace quintara
