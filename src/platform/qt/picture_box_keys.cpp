#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QWindow>

#include "platform/qt/accessibility.hpp"
#include "platform/qt/dispatcher.hpp"
#include "platform/qt/form.hpp"
#include "platform/qt/picture_box_widget.hpp"

// The picture box without a mouse: its own pointer, and what a screen reader hears of it.
namespace quintara {

namespace {
constexpr int kArm = 12;  ///< logical pixels from the middle of the cross to its ends
}

void PictureBoxWidget::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (const auto step = KeyboardPointer::stepOf(*event); step && control_ != nullptr) {
    dispatcher_.dispatch(*this, [this, step] { stepTo(*step); });
  } else if (enter && !event->isAutoRepeat() && pointer_.at()) {
    dispatcher_.dispatch(
        *this, [this] { pick(); }, Dispatcher::OnError::EndProgram);
  } else {
    if (event->key() == Qt::Key_Escape) {
      endPointer();
    }
    QWidget::keyPressEvent(event);
  }
}

void PictureBoxWidget::stepTo(KeyboardPointer::Step step) {
  if (!control_->PointerStops || !pointer_.go(step, control_->PointerStops(), raster_)) {
    return;
  }
  window()->windowHandle()->installEventFilter(this);
  showPointer();
  if (control_->MouseMove) {
    control_->MouseMove({.X = pointer_.at()->X, .Y = pointer_.at()->Y});
  }
  say(*this, readOut());
}

/// As a press on the bar, let go of outside: the pointer was there the moment before.
void PictureBoxWidget::pick() {
  if (!pointer_.at() || !control_->MouseMove || !control_->MouseDown || !control_->MouseUp) {
    return;
  }
  const auto [x, y] = *pointer_.at();
  const Raster::UserPosition outside = raster_.toUser(-1, -1);
  control_->MouseMove({.X = x, .Y = y});
  control_->MouseDown({.Button = 1, .X = x, .Y = y});
  control_->MouseUp({.Button = 1, .X = outside.x, .Y = outside.y});
  picked_ = true;
  say(*this, QStringLiteral("Picked: ") + readOut());
}

void PictureBoxWidget::focusOutEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  const bool comesBack = reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
  if (pointer_.at() && !comesBack) {
    // What was picked is on its way to a box; the ground would take it away.
    const bool carries = picked_;
    endPointer();
    if (auto* form = dynamic_cast<Form*>(window()); form != nullptr && !carries) {
      form->leaveControls();
    }
  }
  QWidget::focusOutEvent(event);
}

/// Of the window, while the keyboard's pointer is in use: the mouse takes over.
bool PictureBoxWidget::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonPress) {
    endPointer();
  }
  return false;
}

void PictureBoxWidget::endPointer() {
  if (!pointer_.at()) {
    return;
  }
  pointer_.end();
  picked_ = false;
  window()->windowHandle()->removeEventFilter(this);
  showPointer();
  say(*this, {});
}

QRect PictureBoxWidget::pointerPlace() const {
  if (!pointer_.at()) {
    return {};
  }
  const Raster::LogicalPosition at = raster_.toLogical(pointer_.at()->X, pointer_.at()->Y);
  const QPoint middle(static_cast<int>(at.x), static_cast<int>(at.y));
  return {middle - QPoint(kArm, kArm), middle + QPoint(kArm, kArm)};
}

void PictureBoxWidget::showPointer() {
  constexpr int kEdge = 2;
  const QRect place = pointerPlace();
  for (const QRect& changed : {pointerShown_, place}) {
    update(changed.adjusted(-kEdge, -kEdge, kEdge, kEdge));
  }
  pointerShown_ = place;
}

/// Light on a dark edge: seen on the ground and on whatever is drawn.
void PictureBoxWidget::drawPointer(QPainter& painter) const {
  if (!pointer_.at()) {
    return;
  }
  const QRectF place = QRectF(pointerPlace());
  const QPointF middle = place.center();
  for (const QPen& pen : {QPen(Qt::black, 3), QPen(Qt::white, 1)}) {
    painter.setPen(pen);
    painter.drawLine(QPointF(place.left(), middle.y()), QPointF(place.right(), middle.y()));
    painter.drawLine(QPointF(middle.x(), place.top()), QPointF(middle.x(), place.bottom()));
  }
}

/// What the labels on the picture say whose name tells what their text means.
QString PictureBoxWidget::readOut() const {
  QStringList said;
  for (const QLabel* label : findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (!label->text().isEmpty() &&
        label->accessibleName().endsWith(QStringLiteral(": ") + label->text())) {
      said << label->accessibleName();
    }
  }
  return said.join(QStringLiteral(", "));
}

}  // namespace quintara
