#pragma once

#include <QColor>
#include <QPoint>
#include <QSize>
#include <QString>
#include <string>
#include <string_view>

#include "platform/colour.hpp"
#include "platform/twips.hpp"

namespace quintara {

inline QPoint toPixels(float left, float top) { return {toPixels(left), toPixels(top)}; }

inline QSize toPixelSize(float width, float height) { return {toPixels(width), toPixels(height)}; }

inline QColor toQt(Colour colour) { return QColor::fromRgb(toRgb32(colour)); }

inline Colour fromQt(const QColor& colour) { return fromRgb32(colour.rgb()); }

inline QString toQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace quintara
