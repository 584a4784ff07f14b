#pragma once

#include <QColor>
#include <QPoint>
#include <QSize>
#include <QString>
#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "platform/colour.hpp"

namespace quintara {

constexpr int kTwipsPerPixel = 15;

/// The nearest logical pixel, within what a widget can take; 0 for what is not a number.
inline int toPixels(float twips) {
  constexpr float kLimit = 1 << 20;
  if (std::isnan(twips)) {
    return 0;
  }
  return static_cast<int>(std::lround(std::clamp(twips / kTwipsPerPixel, -kLimit, kLimit)));
}

inline QPoint toPixels(float left, float top) { return {toPixels(left), toPixels(top)}; }

inline QSize toPixelSize(float width, float height) { return {toPixels(width), toPixels(height)}; }

template <class Number>
float toTwips(Number pixels) {
  return static_cast<float>(pixels * kTwipsPerPixel);
}

inline QColor toQt(Colour colour) { return QColor::fromRgb(toRgb32(colour)); }

inline Colour fromQt(const QColor& colour) { return fromRgb32(colour.rgb()); }

inline QString toQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace quintara
