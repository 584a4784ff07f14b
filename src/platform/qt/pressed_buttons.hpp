#pragma once

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <Qt>
#include <functional>

class QEvent;
class QMouseEvent;

namespace quintara {

/// The mouse buttons that a window knows or will know to be down. A release while a message box
/// stands over the window never comes to it, and something would go on being dragged.
class PressedButtons {
 public:
  /// Every event on its way to a window, other than a message box, when the person makes it.
  void see(QObject& window, const QEvent& event);
  /// Calls `tell` with the release of each button that is up by now without the window's knowing,
  /// where the pointer was last over the window.
  void missedReleases(const std::function<void(QObject& window, const QEvent& release)>& tell);

 private:
  QPointer<QObject> window_;
  Qt::MouseButtons down_;
  QPointF inWindow_;
  QPointF onScreen_;
};

}  // namespace quintara
