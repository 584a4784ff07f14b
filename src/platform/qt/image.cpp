#include <QWidget>

#include "platform/qt/make_control.hpp"

namespace quintara {

/// An image holds a picture for others, such as the mouse pointer; by itself it is not shown.
std::unique_ptr<Control> makeImage(const ControlDesign& design, QWidget& parent,
                                   Dispatcher& /*dispatcher*/) {
  auto* widget = new QWidget(&parent);
  prepare(*widget, design);
  widget->hide();
  return std::make_unique<Image>(design.picture);
}

}  // namespace quintara
