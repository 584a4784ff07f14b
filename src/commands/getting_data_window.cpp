#include "commands/getting_data_window.hpp"

namespace quintara {

namespace {

const WindowDesign kWindow{.name = "frmGettingData",
                           .caption = "Retrieving data......",
                           .scaleWidth = 4680,
                           .scaleHeight = 1020,
                           .fixedDialog = true};
const ControlDesign kFrame{.kind = ControlKind::Frame,
                           .name = "Frame1",
                           .left = 60,
                           .top = 0,
                           .width = 4575,
                           .height = 975,
                           .meaning = "Progress"};
const ControlDesign kInfo{.kind = ControlKind::Label,
                          .name = "lblInfo",
                          .container = "Frame1",
                          .left = 120,
                          .top = 240,
                          .width = 4335,
                          .height = 375,
                          .meaning = "Current step",
                          .look = {.centred = true},
                          .fontSize = 9.75F};

}  // namespace

void frmGettingData::setInfo(std::string_view text) {
  if (!window_) {
    Form_Load();
  }
  window_->control<Label>("lblInfo").setCaption(text);
}

void frmGettingData::Show() { window_->Show(); }

void frmGettingData::Form_Load() {
  window_ = toolkit_.newWindow(kWindow);
  window_->add(kFrame);
  window_->add(kInfo);
  window_->Move(screen_.Width() / 2 - window_->Width() / 2,
                screen_.Height() / 2 - window_->Height() / 2);
}

}  // namespace quintara
