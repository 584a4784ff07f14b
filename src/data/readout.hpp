#pragma once

#include "data/candle.hpp"
#include "platform/controls.hpp"

namespace quintara {

/// The labels in the chart's corner that show one bar.
struct Readout {
  Label& lblDate;
  Label& lblOpen;
  Label& lblHigh;
  Label& lblLow;
  Label& lblClose;
};

/// Shows a bar's prices and date.
void showBar(const Candle& candle, const Readout& readout);

}  // namespace quintara
