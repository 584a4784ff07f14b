#pragma once

#include <QPixmap>
#include <QString>
#include <memory>
#include <string_view>

class QPainter;
class QSvgRenderer;
class QWidget;

namespace quintara {

/// A picture of the program's art. It is read when it is first drawn, and drawn as sharp as the
/// surface allows.
class ArtPicture {
 public:
  explicit ArtPicture(std::string_view name);
  ArtPicture(const ArtPicture&) = delete;
  ArtPicture& operator=(const ArtPicture&) = delete;
  ~ArtPicture();

  /// In its natural size, in the middle of the widget, on whole device pixels.
  void drawCentred(QPainter& painter, const QWidget& widget);
  /// In its natural size at that many device pixels to a logical one.
  QPixmap pixmap(double devicePixelRatio);

 private:
  QSvgRenderer& renderer();

  QString path_;
  std::unique_ptr<QSvgRenderer> renderer_;
};

}  // namespace quintara
