#include "data/candle.hpp"

namespace quintara {

void Candle::Draw(DrawingSurface& picChart) const {
  const bool rising = dOpen <= dClose;
  const float top = rising ? dClose : dOpen;
  const float bottom = rising ? dOpen : dClose;
  const float middle = Left + 1;
  picChart.Line(Left, top, Left + 2, bottom, kBarColour,
                rising ? BoxMode::Outline : BoxMode::Filled);
  picChart.Line(middle, top, middle, dHigh, kBarColour);
  picChart.Line(middle, bottom, middle, dLow, kBarColour);
}

void Candle::DrawBar(DrawingSurface& picChart) const {
  picChart.Line(Left, dHigh, Left, dLow, kBarColour);
  picChart.Line(Left, dOpen, Left + 2, dOpen, kBarColour);
  picChart.Line(Left, dClose, Left - 2, dClose, kBarColour);
}

}  // namespace quintara
