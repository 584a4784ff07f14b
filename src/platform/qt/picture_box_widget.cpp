#include "platform/qt/picture_box_widget.hpp"

#include <QCoreApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>

#include "platform/qt/dispatcher.hpp"
#include "platform/qt/make_control.hpp"
#include "platform/qt/mouse.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

PictureBoxWidget::PictureBoxWidget(const ControlDesign& design, QWidget& parent,
                                   Dispatcher& dispatcher)
    : QWidget(&parent),
      dispatcher_(dispatcher),
      glyphs_(formFont(design.fontSize, design.bold)),
      raster_(glyphs_, design.backColor, design.foreColor) {
  prepare(*this, design);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  fitRaster();
  raster_.Cls();
}

bool PictureBoxWidget::place(const QRect& place) {
  const bool resized = place.size() != size();
  setGeometry(place);
  if (resized) {
    fitRaster();
  }
  return resized;
}

void PictureBoxWidget::fitRaster() {
  pixelRatio_ = devicePixelRatioF();
  glyphs_.setScale(pixelRatio_);
  raster_.resize(width(), height(), pixelRatio_);
}

void PictureBoxWidget::showChanges() {
  if (repaintIsDue_ || !raster_.takeDamage()) {
    return;
  }
  repaintIsDue_ = true;
  update();
}

/// The picture of another pixel density is gone; whoever drew it is asked to draw again.
void PictureBoxWidget::adoptPixelRatio() {
  if (pixelRatio_ == devicePixelRatioF()) {
    return;
  }
  fitRaster();
  update();
  dispatcher_.dispatch(*this, [this] {
    if (control_ != nullptr && control_->Resize) {
      control_->Resize();
    }
  });
}

void PictureBoxWidget::paintEvent(QPaintEvent* /*event*/) {
  repaintIsDue_ = false;
  static_cast<void>(raster_.takeDamage());
  const double ratio = devicePixelRatioF();
  // No handler runs while painting.
  if (ratio != pixelRatio_) {
    QMetaObject::invokeMethod(
        this, [this] { adoptPixelRatio(); }, Qt::QueuedConnection);
  }
  const QImage image(reinterpret_cast<const uchar*>(raster_.pixels()), raster_.deviceWidth(),
                     raster_.deviceHeight(), raster_.stride(), QImage::Format_RGB32);
  QPainter painter(this);
  painter.save();
  painter.scale(1 / ratio, 1 / ratio);
  painter.drawImage(0, 0, image);
  painter.restore();
  drawPointer(painter);
  if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
}

MouseEvent PictureBoxWidget::inUserCoordinates(const QMouseEvent& event) const {
  MouseEvent mouse = toMouseEvent(event);
  const Raster::UserPosition at = raster_.toUser(event.position().x(), event.position().y());
  mouse.X = at.x;
  mouse.Y = at.y;
  return mouse;
}

void PictureBoxWidget::mousePressEvent(QMouseEvent* event) {
  const MouseEvent mouse = inUserCoordinates(*event);
  if (mouse.Button == 0 || control_ == nullptr || !control_->MouseDown) {
    return;
  }
  dispatcher_.dispatch(
      *this, [this, mouse] { control_->MouseDown(mouse); }, Dispatcher::OnError::EndProgram);
}

void PictureBoxWidget::mouseMoveEvent(QMouseEvent* event) {
  if (control_ == nullptr || !control_->MouseMove) {
    return;
  }
  const MouseEvent mouse = inUserCoordinates(*event);
  dispatcher_.dispatch(*this, [this, mouse] { control_->MouseMove(mouse); });
}

void PictureBoxWidget::mouseReleaseEvent(QMouseEvent* event) {
  const MouseEvent mouse = inUserCoordinates(*event);
  if (mouse.Button == 0 || control_ == nullptr || !control_->MouseUp) {
    return;
  }
  dispatcher_.dispatch(*this, [this, mouse] { control_->MouseUp(mouse); });
  if (event->buttons() == Qt::NoButton) {
    hoverOverBoxUnder(*event);
  }
}

/// Letting go over a text box is the first movement over it: a finger makes no other.
void PictureBoxWidget::hoverOverBoxUnder(const QMouseEvent& release) {
  const QPoint inWindow = mapTo(window(), release.position().toPoint());
  auto* box = qobject_cast<QLineEdit*>(window()->childAt(inWindow));
  if (box == nullptr) {
    return;
  }
  QMouseEvent move(QEvent::MouseMove, box->mapFrom(window(), inWindow), release.globalPosition(),
                   Qt::NoButton, Qt::NoButton, release.modifiers());
  QCoreApplication::sendEvent(box, &move);
}

}  // namespace quintara
