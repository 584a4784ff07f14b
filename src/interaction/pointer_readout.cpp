#include "interaction/pointer_readout.hpp"

#include <algorithm>

#include "data/bar_positions.hpp"
#include "values/errors.hpp"
#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara {

namespace {

void leaveChart(const ChartState& state, const PointerControls& controls) {
  controls.screen.setMousePointer(kArrowPointer);
  OutOfPic(state, controls);
}

}  // namespace

void CandleData(const ChartState& state, const PointerControls& controls, float X, float Y) {
  // The old text stays, silently.
  trapErrors([&] {
    std::size_t k =
        static_cast<std::size_t>(std::max<std::int16_t>(barNumber(X, state.iSpacing), 1));
    k = std::min(k, state.candles().Count());
    showBar(state.candles().Item(k), controls.readout);
    controls.lblCurrent.setCaption(defaultText(toSingle(roundTo3(Y))));
  });
}

void OutOfPic(const ChartState& state, const PointerControls& controls) {
  // Without a series only the price goes; a series of exactly one bar leaves everything.
  if (state.colCandles && state.colCandles->Count() <= 1) {
    return;
  }
  if (state.colCandles) {
    showBar(state.colCandles->Item(1), controls.readout);
  }
  controls.lblCurrent.setCaption("");
}

void picChart_MouseMove(const ChartState& state, const DragState& drag,
                        const PointerControls& controls, const MouseEvent& event) {
  if (drag.bDragging) {
    return;
  }
  controls.screen.setMousePointer(kCrossHairPointer);
  CandleData(state, controls, event.X, event.Y);
}

void Form_MouseMove(const ChartState& state, DragState& drag, const PointerControls& controls) {
  leaveChart(state, controls);
  if (drag.sngPicked > 0) {
    drag.sngPicked = -1;
  } else if (drag.sngPickedLow > 0) {
    drag.letGo();
  }
}

void Frame_MouseMove(const ChartState& state, DragState& drag, const PointerControls& controls) {
  leaveChart(state, controls);
  if (drag.sngPickedLow > 0) {
    drag.letGo();
  }
}

}  // namespace quintara
