#include "platform/qt/mouse.hpp"

#include <QMouseEvent>
#include <QWidget>

#include "platform/qt/dispatcher.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

namespace {

std::int16_t mask(Qt::MouseButtons buttons) {
  int bits = 0;
  if (buttons.testFlag(Qt::LeftButton)) {
    bits |= 1;
  }
  if (buttons.testFlag(Qt::RightButton)) {
    bits |= 2;
  }
  if (buttons.testFlag(Qt::MiddleButton)) {
    bits |= 4;
  }
  return static_cast<std::int16_t>(bits);
}

std::int16_t mask(Qt::KeyboardModifiers keys) {
  int bits = 0;
  if (keys.testFlag(Qt::ShiftModifier)) {
    bits |= 1;
  }
  if (keys.testFlag(Qt::ControlModifier)) {
    bits |= 2;
  }
  if (keys.testFlag(Qt::AltModifier)) {
    bits |= 4;
  }
  return static_cast<std::int16_t>(bits);
}

}  // namespace

MouseEvent toMouseEvent(const QMouseEvent& event) {
  const bool release = event.type() == QEvent::MouseButtonRelease;
  const QPointF at = event.position();
  return {.Button = mask(release ? Qt::MouseButtons(event.button()) : event.buttons()),
          .Shift = mask(event.modifiers()),
          .X = toTwips(at.x()),
          .Y = toTwips(at.y())};
}

MouseMoveHook::MouseMoveHook(QWidget& widget, const Control& control, Dispatcher& dispatcher)
    : QObject(&widget), control_(control), dispatcher_(dispatcher) {
  widget.setMouseTracking(true);
  widget.installEventFilter(this);
}

bool MouseMoveHook::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseMove && control_.MouseMove) {
    const MouseEvent move = toMouseEvent(static_cast<QMouseEvent&>(*event));
    dispatcher_.dispatch(*watched, [this, move] { control_.MouseMove(move); });
  }
  return false;
}

}  // namespace quintara
