#pragma once

#include "data/chart_state.hpp"
#include "values/numbers.hpp"

namespace quintara {

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

}  // namespace quintara
