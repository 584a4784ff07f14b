#include "interaction/picking.hpp"

#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara {

namespace {

constexpr std::int16_t kLeftButton = 1;
constexpr auto kHigh = &DragState::sngPickedHigh;
constexpr auto kLow = &DragState::sngPickedLow;

}  // namespace

const std::array<DropTarget, 8> kDropTargets{{
    {"txtA1", kLow, kLow},
    {"txtA2", kLow, kLow},
    {"txtB1", kHigh, kHigh},
    {"txtC1", kHigh, kLow},
    {"txtA3", kHigh, kHigh},
    {"txtA4", kHigh, kHigh},
    {"txtB2", kLow, kLow},
    {"txtC2", kHigh, kHigh},
}};

void picChart_MouseDown(const ChartState& state, DragState& drag, const Readout& readout,
                        Screen& screen, const Image& imgDragDrop2, const MouseEvent& event) {
  // One row of the table is enough to pick from, though not for a chart.
  if (state.sRows.size() < 3 || event.Button != kLeftButton) {
    return;
  }
  drag.bDragging = true;
  drag.sngPickedLow = toSingle(readLocaleNumber(readout.lblLow.Caption()));
  drag.sngPickedHigh = toSingle(readLocaleNumber(readout.lblHigh.Caption()));
  screen.setMousePointer(kPicturePointer);
  screen.setMouseIcon(imgDragDrop2.Picture());
}

void picChart_MouseUp(DragState& drag, const PictureBox& picChart, Screen& screen,
                      const MouseEvent& event) {
  if (picChart.Point(event.X, event.Y) == 0) {
    drag.letGo();
  }
  drag.bDragging = false;
  screen.setMousePointer(kCrossHairPointer);
}

void dropInto(TextBox& box, const DropTarget& target, DragState& drag, Screen& screen) {
  if (drag.*target.tested > 0) {
    box.setText(defaultText(drag.*target.written));
    drag.letGo();
  }
  screen.setMousePointer(kArrowPointer);
}

}  // namespace quintara
