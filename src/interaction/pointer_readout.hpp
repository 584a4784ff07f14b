#pragma once

#include "data/chart_state.hpp"
#include "data/readout.hpp"
#include "interaction/drag_state.hpp"
#include "platform/platform.hpp"

namespace quintara {

/// What the pointer's movements write to.
struct PointerControls {
  Readout readout;
  Label& lblCurrent;  ///< price at the pointer's height
  Screen& screen;
};

/// Shows the bar under the pointer and the price at its height; X and Y in the chart's scale. Ends
/// silently at the first run-time error, with the labels as far as they got.
void CandleData(const ChartState& state, const PointerControls& controls, float X, float Y);

/// Shows the newest bar again, if there is more than one, and no price.
void OutOfPic(const ChartState& state, const PointerControls& controls);

/// Over the chart: cross-hair and readout, both frozen while a price is dragged.
void picChart_MouseMove(const ChartState& state, const DragState& drag,
                        const PointerControls& controls, const MouseEvent& event);
/// Over the window's background: arrow, newest bar, and a held price is dropped.
void Form_MouseMove(const ChartState& state, DragState& drag, const PointerControls& controls);
/// Over a frame's own area: the same.
void Frame_MouseMove(const ChartState& state, DragState& drag, const PointerControls& controls);

}  // namespace quintara
