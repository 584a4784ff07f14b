#include "platform/qt/art.hpp"

#include <QPainter>
#include <QSvgRenderer>
#include <QWidget>

#include "platform/qt/units.hpp"

namespace quintara {

ArtPicture::ArtPicture(std::string_view name)
    : path_(QStringLiteral(":/art/") + toQt(name) + QStringLiteral(".svg")) {}

ArtPicture::~ArtPicture() = default;

QSvgRenderer& ArtPicture::renderer() {
  if (!renderer_) {
    renderer_ = std::make_unique<QSvgRenderer>(path_);
  }
  return *renderer_;
}

void ArtPicture::drawCentred(QPainter& painter, const QWidget& widget) {
  const QSizeF size = renderer().defaultSize();
  const double ratio = widget.devicePixelRatioF();
  const QSizeF free = (widget.size() - size) / 2;
  const QPointF corner(std::floor(free.width() * ratio) / ratio,
                       std::floor(free.height() * ratio) / ratio);
  renderer().render(&painter, QRectF(corner, size));
}

QPixmap ArtPicture::pixmap(double devicePixelRatio) {
  const QSizeF size = renderer().defaultSize();
  QPixmap pixmap((size * devicePixelRatio).toSize());
  pixmap.setDevicePixelRatio(devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  renderer().render(&painter, QRectF(QPointF(), size));
  return pixmap;
}

}  // namespace quintara
