#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <optional>

#include "platform/qt/art.hpp"
#include "platform/qt/dispatcher.hpp"
#include "platform/qt/make_control.hpp"
#include "platform/qt/mouse.hpp"

namespace quintara {

namespace {

class ButtonWidget final : public QPushButton {
 public:
  ButtonWidget(const ControlDesign& design, QWidget& parent)
      : QPushButton(withoutMnemonics(design.caption), &parent) {
    prepare(*this, design);
    setAutoDefault(false);
    if (!design.picture.empty()) {
      picture_.emplace(design.picture);
    }
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPushButton::paintEvent(event);
    if (!picture_) {
      return;
    }
    QPainter painter(this);
    picture_->drawCentred(painter, *this);
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !event->isAutoRepeat()) {
      click();
    } else {
      QPushButton::keyPressEvent(event);
    }
  }

 private:
  std::optional<ArtPicture> picture_;
};

}  // namespace

std::unique_ptr<Control> makeButton(const ControlDesign& design, QWidget& parent,
                                    Dispatcher& dispatcher) {
  auto* widget = new ButtonWidget(design, parent);
  auto button = std::make_unique<Button>();
  const auto presses = design.pilesUp ? Dispatcher::Presses::PileUp : Dispatcher::Presses::Count;
  QObject::connect(widget, &QPushButton::clicked, widget,
                   [widget, presses, &dispatcher, &control = std::as_const(*button)] {
                     if (control.Click) {
                       dispatcher.dispatchPress(*widget, control.Click, presses);
                     }
                   });
  new MouseMoveHook(*widget, *button, dispatcher);
  return button;
}

}  // namespace quintara
