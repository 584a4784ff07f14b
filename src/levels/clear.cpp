#include "levels/clear.hpp"

namespace quintara {

void Clear(const PointBoxes& boxes, const PointSets& sets) {
  for (const PointSet& set : sets) {
    for (Label* label : set.lblRetracements) {
      label->setCaption("");
    }
  }
  for (const PointSet& set : sets) {
    for (Label* label : set.lblTargets) {
      label->setCaption("");
    }
  }
  for (const PointSet& set : sets) {
    set.chkShow->setValue(0);
  }
  for (TextBox* box : boxes) {
    box->setText("");
  }
  for (const PointSet& set : sets) {
    for (CheckBox* box : set.chkTargets) {
      box->setValue(0);
    }
  }
}

void cmdClear_Click(const ChartState& state, const PointBoxes& boxes, const PointSets& sets,
                    const std::function<void()>& drawChart) {
  Clear(boxes, sets);
  if (state.hasChart()) {
    drawChart();
  }
}

}  // namespace quintara
