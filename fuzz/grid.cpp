// The grid of any price range. Input: highest price, lowest price, price per pixel and position of
// the bars, as the bytes of singles, then the height of the chart as a 16-bit integer.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>

#include "chart/grid.hpp"

#include "chart/draw_chart.hpp"
#include "checking_surface.hpp"

namespace quintara::fuzz {

namespace {

struct Numbers {
  float max, min, pricePerPixel, left;
  std::int16_t height;
};

ChartState chartOf(const Numbers& numbers) {
  ChartState state;
  state.sRows.resize(4);
  state.iChartType = 3;  // no bars: the grid is what counts
  state.sngMax = numbers.max;
  state.sngMin = numbers.min;
  state.colCandles.emplace();
  Candle candle;
  candle.Left = numbers.left;
  for (int i = 0; i < 100; ++i) state.candles().Add(candle);
  return state;
}

void draw(CheckingSurface& surface, const std::function<void()>& drawing) {
  try {
    drawing();
  } catch (const RuntimeError& error) {
    check(error.kind() == ErrorKind::Overflow || error.kind() == ErrorKind::DivisionByZero,
          "a drawing fails with Overflow or DivisionByZero only");
  }
  check(surface.longestLabel() < 64, "labels are short");
}

}  // namespace

void tryInput(std::string_view input) {
  Numbers numbers{};
  std::memcpy(&numbers, input.data(), std::min(input.size(), sizeof numbers));
  // The state's numbers are checked when they are stored.
  for (const float number : {numbers.max, numbers.min, numbers.pricePerPixel, numbers.left}) {
    if (!std::isfinite(number)) return;
  }
  ChartState state = chartOf(numbers);
  CheckingSurface surface(700, numbers.height);
  draw(surface, [&] { DrawChart(state, surface); });
  if (!state.bDrawing) {
    check(std::isfinite(state.sngPricePerPixel), "the price per pixel is a number");
  }
  // A price per pixel that does not belong to the range, as after a failed drawing.
  state.sngPricePerPixel = numbers.pricePerPixel;
  surface.Cls();
  draw(surface, [&] { Grid(state, surface); });
}

}  // namespace quintara::fuzz
