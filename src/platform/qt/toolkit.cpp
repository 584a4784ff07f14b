#include "platform/qt/toolkit.hpp"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <stdexcept>

#include "platform/qt/form.hpp"
#include "platform/qt/make_control.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

namespace {

class QtWindow final : public Window {
 public:
  QtWindow(const WindowDesign& design, Dispatcher& dispatcher)
      : dispatcher_(dispatcher), form_(new Form(design, *this, dispatcher)) {}
  ~QtWindow() override { delete form_; }

  void setTabOrder(std::span<const std::string> names) override;
  void Show() override { form_->present(); }
  void Move(float left, float top) override {
    form_->move(QGuiApplication::primaryScreen()->geometry().topLeft() + toPixels(left, top));
  }
  [[nodiscard]] std::string Caption() const override { return form_->windowTitle().toStdString(); }
  [[nodiscard]] float Width() const override { return toTwips(framedSize().width()); }
  [[nodiscard]] float Height() const override { return toTwips(framedSize().height()); }
  [[nodiscard]] float ScaleWidth() const override { return toTwips(form_->width()); }
  [[nodiscard]] float ScaleHeight() const override { return toTwips(form_->height()); }

 protected:
  std::unique_ptr<Control> create(const ControlDesign& design) override;

 private:
  [[nodiscard]] QWidget& widget(std::string_view name) const;
  /// A window that is not shown yet has no border; it will get one like the main window's.
  [[nodiscard]] QSize framedSize() const {
    const QWidget* framed = form_;
    if (!form_->isVisible() && Form::mainForm() != nullptr) {
      framed = Form::mainForm();
    }
    return form_->size() + framed->frameGeometry().size() - framed->size();
  }

  Dispatcher& dispatcher_;
  QPointer<Form> form_;  ///< the application object deletes what is left of it
};

using Make = std::unique_ptr<Control> (*)(const ControlDesign&, QWidget&, Dispatcher&);

Make makerOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::Label:
      return makeLabel;
    case ControlKind::TextBox:
      return makeTextBox;
    case ControlKind::ComboBox:
      return makeComboBox;
    case ControlKind::CheckBox:
      return makeCheckBox;
    case ControlKind::PushCheckBox:
      return makePushCheckBox;
    case ControlKind::Button:
    case ControlKind::PictureButton:
      return makeButton;
    case ControlKind::Frame:
      return makeFrame;
    case ControlKind::Image:
      return makeImage;
    case ControlKind::PictureBox:
      return makePictureBox;
  }
  throw std::invalid_argument("no such kind of control");
}

std::unique_ptr<Control> QtWindow::create(const ControlDesign& design) {
  QWidget& container = design.container.empty() ? *form_ : widget(design.container);
  return makerOf(design.kind)(design, container, dispatcher_);
}

QWidget& QtWindow::widget(std::string_view name) const {
  auto* found = form_->findChild<QWidget*>(toQt(name));
  if (found == nullptr) {
    throw std::out_of_range("no control is called " + std::string(name));
  }
  return *found;
}

void QtWindow::setTabOrder(std::span<const std::string> names) {
  if (names.empty()) {
    return;
  }
  QWidget* previous = &widget(names.front());
  previous->setFocus(Qt::OtherFocusReason);
  for (const std::string& name : names.subspan(1)) {
    QWidget& next = widget(name);
    QWidget::setTabOrder(previous, &next);
    previous = &next;
  }
}

}  // namespace

std::unique_ptr<Window> QtToolkit::newWindow(const WindowDesign& design) {
  return std::make_unique<QtWindow>(design, dispatcher_);
}

}  // namespace quintara
