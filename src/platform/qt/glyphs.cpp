#include "platform/qt/glyphs.hpp"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <cmath>

namespace quintara {

void QtGlyphs::setScale(double devicePixelRatio) {
  if (devicePixelRatio == scale_) {
    return;
  }
  scale_ = devicePixelRatio;
  rendered_.clear();
  font_ = formFont_;
  font_.setPixelSize(static_cast<int>(std::lround(formFont_.pixelSize() * scale_)));
  const QFontMetrics metrics(font_);
  ascent_ = metrics.ascent();
  lineHeight_ = metrics.height();
}

const Glyph& QtGlyphs::glyph(char32_t character) {
  const auto known = rendered_.find(character);
  if (known != rendered_.end()) {
    return known->second;
  }
  return rendered_.emplace(character, render(character)).first->second;
}

Glyph QtGlyphs::render(char32_t character) const {
  const QString text = QString::fromUcs4(&character, 1);
  const QFontMetrics metrics(font_);
  // A character may reach a little beyond its own width.
  const int margin = lineHeight_ / 4;
  Glyph glyph{};
  glyph.advance = metrics.horizontalAdvance(text);
  glyph.left = -margin;
  glyph.width = glyph.advance + 2 * margin;
  glyph.height = lineHeight_;

  QImage image(glyph.width, glyph.height, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setFont(font_);
  painter.setPen(Qt::white);
  painter.drawText(margin, ascent_, text);
  painter.end();

  glyph.coverage.reserve(static_cast<std::size_t>(glyph.width) *
                         static_cast<std::size_t>(glyph.height));
  for (int y = 0; y < glyph.height; ++y) {
    for (int x = 0; x < glyph.width; ++x) {
      glyph.coverage.push_back(static_cast<std::uint8_t>(qAlpha(image.pixel(x, y))));
    }
  }
  return glyph;
}

}  // namespace quintara
