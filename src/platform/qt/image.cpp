#include <QWidget>

#include "platform/qt/make_control.hpp"

namespace quintara {

namespace {

class QtImage final : public Image {
 public:
  explicit QtImage(std::string_view picture) : picture_(picture) {}
  [[nodiscard]] std::string Picture() const override { return picture_; }

 private:
  const std::string picture_;
};

}  // namespace

/// An image holds a picture for others, such as the mouse pointer; by itself it is not shown.
std::unique_ptr<Control> makeImage(const ControlDesign& design, QWidget& parent,
                                   Dispatcher& /*dispatcher*/) {
  auto* widget = new QWidget(&parent);
  prepare(*widget, design);
  widget->hide();
  return std::make_unique<QtImage>(design.picture);
}

}  // namespace quintara
