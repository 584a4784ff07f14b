#pragma once

#include <array>
#include <string_view>

#include "data/chart_state.hpp"
#include "data/readout.hpp"
#include "interaction/drag_state.hpp"
#include "platform/platform.hpp"

namespace quintara {

/// Which price a point box takes.
struct DropTarget {
  std::string_view box;
  float DragState::*tested;   ///< dropped if this price is held
  float DragState::*written;  ///< the price that the box receives
};

/// The eight point boxes. `txtC1` takes the low when the high is held; the others test what they
/// take.
extern const std::array<DropTarget, 8> kDropTargets;

/// Left button alone, with data: takes up the high and low of the bar in the readout; the pointer
/// becomes the picture of `imgDragDrop2`.
/// Throws TypeMismatch when the readout shows no numbers.
void picChart_MouseDown(const ChartState& state, DragState& drag, const Readout& readout,
                        Screen& screen, const Image& imgDragDrop2, const MouseEvent& event);
/// Any button: a release over the chart's bare background lets the prices go.
void picChart_MouseUp(DragState& drag, const PictureBox& picChart, Screen& screen,
                      const MouseEvent& event);
/// The pointer moved over a point box: drops what is held.
void dropInto(TextBox& box, const DropTarget& target, DragState& drag, Screen& screen);

}  // namespace quintara
