#pragma once

namespace quintara {

/// A price on its way from the chart to a point box. Prices are held while above 0; -1 and 0 both
/// mean that nothing is.
struct DragState {
  bool bDragging = false;
  float sngPickedHigh = 0;
  float sngPickedLow = 0;
  float sngPicked = 0;  ///< reset by the window's mouse-move handler, never set above 0

  void letGo() { sngPickedHigh = sngPickedLow = -1; }
};

}  // namespace quintara
