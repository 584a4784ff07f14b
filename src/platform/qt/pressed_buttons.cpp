#include "platform/qt/pressed_buttons.hpp"

#include <QGuiApplication>
#include <QMouseEvent>
#include <utility>

namespace quintara {

void PressedButtons::see(QObject& window, const QEvent& event) {
  const bool isMove = event.type() == QEvent::MouseMove;
  if (!isMove && event.type() != QEvent::MouseButtonPress &&
      event.type() != QEvent::MouseButtonRelease) {
    return;
  }
  const auto& mouse = static_cast<const QMouseEvent&>(event);
  if (isMove && down_ == Qt::NoButton) {
    return;
  }
  window_ = &window;
  inWindow_ = mouse.scenePosition();
  onScreen_ = mouse.globalPosition();
  down_.setFlag(mouse.button(), event.type() == QEvent::MouseButtonPress);
}

void PressedButtons::missedReleases(
    const std::function<void(QObject& window, const QEvent& release)>& tell) {
  const Qt::MouseButtons held = QGuiApplication::mouseButtons();
  const Qt::MouseButtons missed = std::exchange(down_, down_ & held) & ~held;
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    if (window_ && missed.testFlag(button)) {
      tell(*window_, QMouseEvent(QEvent::MouseButtonRelease, inWindow_, inWindow_, onScreen_,
                                 button, held, Qt::NoModifier));
    }
  }
}

}  // namespace quintara
