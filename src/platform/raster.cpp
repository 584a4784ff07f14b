#include "platform/raster.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quintara {
namespace {

int deviceSize(int logical, double ratio) { return static_cast<int>(std::lround(logical * ratio)); }

/// User units per logical pixel. An area without a pixel to spread them over keeps its unit: the
/// next resize asks for it.
double unitOf(float first, float last, int logicalSize, double unit) {
  if (logicalSize == 0) {
    return unit;
  }
  return (static_cast<double>(last) - static_cast<double>(first)) / logicalSize;
}

/// The device pixel that a logical position lies in. Windowing systems divide by the ratio, so that
/// the product can miss a whole number by a hair.
double devicePixel(double logical, double ratio) { return std::floor(logical * ratio + 1e-6); }

}  // namespace

Raster::Raster(GlyphSource& glyphs, Colour background, Colour foreground)
    : glyphs_(&glyphs), background_(toRgb32(background)), foreground_(toRgb32(foreground)) {
  updateTextShades();
}

void Raster::resize(int logicalWidth, int logicalHeight, double devicePixelRatio) {
  if (devicePixelRatio != ratio_) {
    image_ = {};
    asciiGlyphs_ = {};
  }
  ratio_ = devicePixelRatio;
  logicalWidth_ = logicalWidth;
  logicalHeight_ = logicalHeight;
  image_.resize(deviceSize(logicalWidth, ratio_), deviceSize(logicalHeight, ratio_), background_);
  thickness_ = std::max(1, static_cast<int>(std::lround(ratio_)));
  x_.set(x_.origin, x_.unit, ratio_);
  y_.set(y_.origin, y_.unit, ratio_);
  updatePattern();
  damaged_ = true;
}

void Raster::Axis::set(double newOrigin, double newUnit, double ratio) {
  origin = newOrigin;
  unit = newUnit;
  perUnit = unit == 0 ? 0 : ratio / unit;
}

void Raster::Cls() {
  image_.clear(background_);
  currentX_ = 0;
  currentY_ = 0;
  damaged_ = true;
}

void Raster::setScaleModePixels() {
  x_.set(0, 1, ratio_);
  y_.set(0, 1, ratio_);
}

void Raster::Scale(float x1, float y1, float x2, float y2) {
  x_.set(x1, unitOf(x1, x2, logicalWidth_, x_.unit), ratio_);
  y_.set(y1, unitOf(y1, y2, logicalHeight_, y_.unit), ratio_);
}

float Raster::ScaleWidth() const { return static_cast<float>(x_.unit * logicalWidth_); }

float Raster::ScaleHeight() const { return static_cast<float>(y_.unit * logicalHeight_); }

std::int32_t Raster::Point(float x, float y) const {
  const double deviceX = x_.device(x);
  const double deviceY = y_.device(y);
  if (std::isnan(deviceX) || std::isnan(deviceY)) {
    return -1;
  }
  const int column = nearestPixel(deviceX);
  const int row = nearestPixel(deviceY);
  if (column < 0 || column >= image_.width() || row < 0 || row >= image_.height()) {
    return -1;
  }
  return static_cast<std::int32_t>(fromRgb32(image_.row(row)[column]).bgr);
}

Raster::UserPosition Raster::toUser(double logicalX, double logicalY) const {
  return {static_cast<float>(x_.origin + devicePixel(logicalX, ratio_) / ratio_ * x_.unit),
          static_cast<float>(y_.origin + devicePixel(logicalY, ratio_) / ratio_ * y_.unit)};
}

Raster::LogicalPosition Raster::toLogical(float x, float y) const {
  return {nearestPixel(x_.device(x)) / ratio_, nearestPixel(y_.device(y)) / ratio_};
}

float Raster::below(float y, int logicalPixels) const {
  if (logicalPixels == 0) {
    return y;
  }
  const int row =
      nearestPixel(y_.device(y)) + static_cast<int>(std::lround(logicalPixels * ratio_));
  const int within = std::clamp(row, 0, std::max(0, image_.height() - 1));
  return static_cast<float>(y_.origin + within / ratio_ * y_.unit);
}

bool Raster::takeDamage() { return std::exchange(damaged_, false); }

}  // namespace quintara
