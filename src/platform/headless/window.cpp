#include "platform/headless/window.hpp"

#include <stdexcept>
#include <utility>

#include "platform/headless/controls.hpp"
#include "platform/headless/picture_box.hpp"

namespace quintara {

HeadlessWindow::HeadlessWindow(WindowDesign design, GlyphSource& glyphs, double devicePixelRatio)
    : design_(std::move(design)), glyphs_(glyphs), ratio_(devicePixelRatio) {}

void HeadlessWindow::resize(float scaleWidth, float scaleHeight) {
  design_.scaleWidth = scaleWidth;
  design_.scaleHeight = scaleHeight;
  if (Resize) {
    Resize();
  }
}

std::unique_ptr<Control> HeadlessWindow::create(const ControlDesign& design) {
  switch (design.kind) {
    case ControlKind::Label:
      return std::make_unique<HeadlessLabel>(design);
    case ControlKind::TextBox:
      return std::make_unique<HeadlessTextBox>();
    case ControlKind::ComboBox:
      return std::make_unique<HeadlessComboBox>();
    case ControlKind::CheckBox:
    case ControlKind::PushCheckBox:
      return std::make_unique<HeadlessCheckBox>();
    case ControlKind::Button:
    case ControlKind::PictureButton:
      return std::make_unique<Button>();
    case ControlKind::Frame:
      return std::make_unique<Frame>();
    case ControlKind::Image:
      return std::make_unique<Image>(design.picture);
    case ControlKind::PictureBox:
      return std::make_unique<HeadlessPictureBox>(design, glyphs_, ratio_);
  }
  throw std::invalid_argument("no such kind of control");
}

}  // namespace quintara
