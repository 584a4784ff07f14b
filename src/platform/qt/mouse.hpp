#pragma once

#include <QObject>

#include "platform/controls.hpp"

class QMouseEvent;
class QWidget;

namespace quintara {

class Dispatcher;

/// The event in the program's terms, with the widget's twips as position.
MouseEvent toMouseEvent(const QMouseEvent& event);

/// Raises a control's MouseMove for the pointer over its widget. Lives as long as the widget.
class MouseMoveHook final : public QObject {
 public:
  MouseMoveHook(QWidget& widget, const Control& control, Dispatcher& dispatcher);
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  const Control& control_;
  Dispatcher& dispatcher_;
};

}  // namespace quintara
