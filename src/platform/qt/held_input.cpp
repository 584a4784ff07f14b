#include "platform/qt/held_input.hpp"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QScopedValueRollback>
#include <QWheelEvent>
#include <utility>

namespace quintara {

namespace {
constexpr std::size_t kMostHeld = 1000;

using Replay = std::function<std::unique_ptr<QEvent>()>;

// A copy of a pointer event shares its position with the device, and follows the pointer: such
// events are made anew.
Replay replay(const QMouseEvent& event) {
  return [type = event.type(), local = event.position(), inWindow = event.scenePosition(),
          global = event.globalPosition(), button = event.button(), buttons = event.buttons(),
          keys = event.modifiers(),
          device = QPointer(const_cast<QPointingDevice*>(event.pointingDevice()))] {
    return std::make_unique<QMouseEvent>(
        type, local, inWindow, global, button, buttons, keys,
        device ? device.data() : QPointingDevice::primaryPointingDevice());
  };
}

Replay replay(const QWheelEvent& event) {
  return [local = event.position(), global = event.globalPosition(), pixels = event.pixelDelta(),
          angle = event.angleDelta(), buttons = event.buttons(), keys = event.modifiers(),
          phase = event.phase(), inverted = event.inverted()] {
    return std::make_unique<QWheelEvent>(local, global, pixels, angle, buttons, keys, phase,
                                         inverted);
  };
}

// The clone of a key event would keep its device, which may be unplugged meanwhile.
Replay replay(const QKeyEvent& event) {
  return [type = event.type(), key = event.key(), keys = event.modifiers(), text = event.text(),
          repeats = event.isAutoRepeat(), count = event.count()] {
    return std::make_unique<QKeyEvent>(type, key, keys, text, repeats, static_cast<quint16>(count));
  };
}

Replay replay(const QContextMenuEvent& event) {
  return [reason = event.reason(), local = event.pos(), global = event.globalPos(),
          keys = event.modifiers()] {
    return std::make_unique<QContextMenuEvent>(reason, local, global, keys);
  };
}

int buttonOf(const QEvent& event) {
  const bool isButton =
      event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonRelease;
  return static_cast<int>(isButton ? static_cast<const QMouseEvent&>(event).button()
                                   : Qt::NoButton);
}

template <class Kind>
Replay replayAs(const QEvent& event) {
  return replay(static_cast<const Kind&>(event));
}

Replay replay(const QEvent& event) {
  switch (event.type()) {
    case QEvent::Wheel:
      return replayAs<QWheelEvent>(event);
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return replayAs<QKeyEvent>(event);
    case QEvent::ContextMenu:
      return replayAs<QContextMenuEvent>(event);
    case QEvent::InputMethod:
      return [copy = std::shared_ptr<QEvent>(event.clone())] {
        return std::unique_ptr<QEvent>(copy->clone());
      };
    default:
      return replayAs<QMouseEvent>(event);
  }
}

}  // namespace

/// Touch and pen are not among these: nobody takes them as such, and they come back as the mouse.
bool HeldInput::isInput(const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
      return true;
    default:
      return false;
  }
}

bool HeldInput::joinsLast(const Held& move) const {
  return move.type == QEvent::MouseMove && !held_.empty() && held_.back().type == move.type &&
         held_.back().receiver == move.receiver && held_.back().movedWith == move.movedWith;
}

/// A release goes the way that its press went: something held down for ever would be worse than
/// a few events too many.
bool HeldInput::hasRoomFor(const QEvent& event) {
  const bool isFree = held_.size() < kMostHeld;
  const bool isKey = event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
  const Pressed what{isKey, isKey ? static_cast<const QKeyEvent&>(event).key() : buttonOf(event)};
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
      if (isFree) {
        dropped_.erase(what);
      } else {
        dropped_.insert(what);
      }
      return isFree;
    case QEvent::MouseButtonRelease:
    case QEvent::KeyRelease:
      return dropped_.erase(what) == 0;
    default:
      return isFree;
  }
}

void HeldInput::hold(QObject& receiver, const QEvent& event, unsigned batch) {
  Held held{&receiver, replay(event), batch, event.type(), {}};
  if (event.type() == QEvent::MouseMove) {
    held.movedWith = static_cast<const QMouseEvent&>(event).buttons();
  }
  if (joinsLast(held)) {
    held_.pop_back();
  }
  if (!hasRoomFor(event)) {
    return;
  }
  if (event.type() == QEvent::MouseButtonDblClick && !held_.empty() &&
      held_.back().type == QEvent::MouseButtonPress) {
    held_.back().announcesDoubleClick = true;
  }
  held_.push_back(std::move(held));
}

void HeldInput::resendFirst() {
  const Held first = std::move(held_.front());
  held_.pop_front();
  if (!first.receiver) {
    return;
  }
  const QScopedValueRollback<bool> announcing(announcing_, first.announcesDoubleClick);
  // Not sendEvent(): it would take away the mark of a real event, and with it the focus by click.
  QCoreApplication::instance()->notify(first.receiver, first.event().get());
}

}  // namespace quintara
