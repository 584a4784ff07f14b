#pragma once

#include <cmath>
#include <cstdint>

#include "data/chart_state.hpp"
#include "values/numbers.hpp"

namespace quintara {

/// Where the newest bar stands: pixels from the chart's right edge. The margin holds the labels.
inline constexpr float kFirstBarLeft = 40;

/// Lays bars out, newest first: bar k stands at 40 + (k - 1) times the spacing, in pixels from the
/// chart's right edge. `sngLeft` is the position that the next bar gets.
class BarPositions {
 public:
  explicit BarPositions(ChartState& state) : state_(state) { state_.sngLeft = kFirstBarLeft; }

  /// The position of the next bar.
  float take() {
    const float left = state_.sngLeft;
    state_.sngLeft = (Single(left) + state_.iSpacing).value();
    return left;
  }

 private:
  ChartState& state_;
};

/// The bar whose slot, its position and the spacing's pixels behind it, holds X; below 1 in the
/// margin. Throws Overflow beyond 16 bits, DivisionByZero without a spacing.
inline std::int16_t barNumber(float X, std::int16_t spacing) {
  const float slots = ((Single(X) - kFirstBarLeft) / spacing).value();
  return toInt16(std::floor(double{slots}) + 1);
}

}  // namespace quintara
