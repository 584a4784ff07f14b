#include "levels/clear.hpp"

#include "chart/summary.hpp"

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

void cmdClear_Click(ChartState& state, const PointBoxes& boxes, const PointSets& sets,
                    PictureBox& picChart) {
  Clear(boxes, sets);
  drawAndDescribe(state, picChart);
}

}  // namespace quintara
