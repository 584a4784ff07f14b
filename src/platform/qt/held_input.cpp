#include "platform/qt/held_input.hpp"

#include <QCoreApplication>
#include <QMouseEvent>
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
          keys = event.modifiers(), device = event.pointingDevice()] {
    return std::make_unique<QMouseEvent>(type, local, inWindow, global, button, buttons, keys,
                                         device);
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

Replay replay(const QEvent& event) {
  if (const auto* mouse = dynamic_cast<const QMouseEvent*>(&event)) {
    return replay(*mouse);
  }
  if (const auto* wheel = dynamic_cast<const QWheelEvent*>(&event)) {
    return replay(*wheel);
  }
  return [copy = std::shared_ptr<QEvent>(event.clone())] {
    return std::unique_ptr<QEvent>(copy->clone());
  };
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

void HeldInput::hold(QObject& receiver, const QEvent& event, unsigned batch) {
  Held held{&receiver, replay(event), batch, {}, event.type() == QEvent::MouseMove};
  if (held.isMove) {
    held.movedWith = static_cast<const QMouseEvent&>(event).buttons();
    const bool goesOn = !held_.empty() && held_.back().isMove &&
                        held_.back().receiver == held.receiver &&
                        held_.back().movedWith == held.movedWith;
    if (goesOn) {
      held_.pop_back();
    }
  }
  if (held_.size() < kMostHeld) {
    held_.push_back(std::move(held));
  }
}

void HeldInput::resendFirst() {
  const Held first = std::move(held_.front());
  held_.pop_front();
  // Not sendEvent(): it would take away the mark of a real event, and with it the focus by click.
  if (first.receiver) {
    QCoreApplication::instance()->notify(first.receiver, first.event().get());
  }
}

}  // namespace quintara
