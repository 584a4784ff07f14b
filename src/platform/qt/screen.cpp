#include "platform/qt/screen.hpp"

#include <QApplication>
#include <QCursor>
#include <QScreen>

#include "platform/qt/art.hpp"
#include "platform/qt/form.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

namespace {

/// Under the tip of the thumb in the one picture that serves as a pointer.
constexpr QPoint kHotSpot(12, 9);

QCursor pictureCursor(const std::string& picture) {
  if (picture.empty()) {
    return Qt::ArrowCursor;
  }
  const QWidget* form = Form::mainForm();
  const double ratio = form == nullptr ? qApp->devicePixelRatio() : form->devicePixelRatioF();
  return QCursor(ArtPicture(picture).pixmap(ratio), kHotSpot.x(), kHotSpot.y());
}

}  // namespace

float QtScreen::Width() const {
  return toTwips(QGuiApplication::primaryScreen()->geometry().width());
}

float QtScreen::Height() const {
  return toTwips(QGuiApplication::primaryScreen()->geometry().height());
}

void QtScreen::setMousePointer(std::int16_t pointer) {
  // Handlers set it on every move of the mouse.
  if (pointer == pointer_) {
    return;
  }
  pointer_ = pointer;
  showPointer();
}

void QtScreen::setMouseIcon(std::string_view picture) {
  if (picture == icon_) {
    return;
  }
  icon_ = picture;
  if (pointer_ == kPicturePointer) {
    showPointer();
  }
}

void QtScreen::showPointer() const {
  if (pointer_ != kCrossHairPointer && pointer_ != kPicturePointer) {
    QGuiApplication::restoreOverrideCursor();
    return;
  }
  const QCursor cursor =
      pointer_ == kCrossHairPointer ? QCursor(Qt::CrossCursor) : pictureCursor(icon_);
  // Overriding twice would stack.
  if (QGuiApplication::overrideCursor() == nullptr) {
    QGuiApplication::setOverrideCursor(cursor);
  } else {
    QGuiApplication::changeOverrideCursor(cursor);
  }
}

}  // namespace quintara
