#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "platform/raster.hpp"

namespace quintara {
namespace {

/// The nearest device pixel with nothing cut off, so that the slope of a long line is its own.
double nearestFar(double device) { return std::floor(std::clamp(device, -1e200, 1e200) + 0.5); }

}  // namespace

void Raster::setDrawStyle(DrawStyle style) {
  style_ = style;
  updatePattern();
}

void Raster::updatePattern() {
  constexpr auto kPatterns =
      std::to_array<StrokePattern>({{1, 1}, {6, 9}, {1, 3}});  // by DrawStyle
  const auto [on, period] = kPatterns.at(static_cast<std::size_t>(style_));
  pattern_ = {on * thickness_, period * thickness_};
}

void Raster::Line(float x1, float y1, float x2, float y2, Colour colour, BoxMode box) {
  const Segment line{x_.device(x1), y_.device(y1), x_.device(x2), y_.device(y2)};
  if (std::isnan(line.x1) || std::isnan(line.y1) || std::isnan(line.x2) || std::isnan(line.y2)) {
    return;
  }
  damaged_ = true;
  const int column1 = nearestPixel(line.x1);
  const int column2 = nearestPixel(line.x2);
  const int row1 = nearestPixel(line.y1);
  const int row2 = nearestPixel(line.y2);
  const bool vertical = column1 == column2;
  const bool horizontal = row1 == row2;
  const PixelRect rect{std::min(column1, column2), std::min(row1, row2),
                       std::max(column1, column2) + thickness_, std::max(row1, row2) + thickness_};
  const std::uint32_t pixel = toRgb32(colour);
  if (box == BoxMode::Filled) {
    image_.fill(rect, pixel);
  } else if (vertical) {
    image_.fillRows(rect, pattern_, pixel);
  } else if (horizontal) {
    image_.fillColumns(rect, pattern_, pixel);
  } else if (box == BoxMode::Outline) {
    image_.outline(rect, thickness_, pattern_, pixel);
  } else {
    slopedLine(line, pixel);
  }
}

void Raster::slopedLine(const Segment& line, std::uint32_t pixel) {
  const Segment ends{nearestFar(line.x1), nearestFar(line.y1), nearestFar(line.x2),
                     nearestFar(line.y2)};
  const bool wide = std::abs(ends.x2 - ends.x1) >= std::abs(ends.y2 - ends.y1);
  const double major1 = wide ? ends.x1 : ends.y1;
  const double major2 = wide ? ends.x2 : ends.y2;
  const double minor1 = wide ? ends.y1 : ends.x1;
  const double minor2 = wide ? ends.y2 : ends.x2;
  const double slope = (minor2 - minor1) / (major2 - major1);
  // From the end that is nearer to the image: one that is far off has no pixel left to tell.
  const double start =
      std::abs(major1) < std::abs(major2) ? minor1 - major1 * slope : minor2 - major2 * slope;
  const auto [first, last] = std::minmax(major1, major2);
  const int majorSize = wide ? image_.width() : image_.height();
  const int minorSize = wide ? image_.height() : image_.width();
  const std::ptrdiff_t majorStep = wide ? 1 : image_.stride();
  const std::ptrdiff_t minorStep = wide ? image_.stride() : 1;
  const int end = static_cast<int>(std::clamp<double>(last + thickness_, 0, majorSize));
  for (int major = static_cast<int>(std::clamp<double>(first, 0, end)); major < end; ++major) {
    if (!pattern_.isOn(major)) {
      continue;
    }
    // The stroke's last pixels are as thick as the others are, not a continuation of the slope.
    const int minor = nearestPixel(start + std::min<double>(major, last) * slope);
    for (int m = std::max(minor, 0); m < std::min(minor + thickness_, minorSize); ++m) {
      image_.row(0)[major * majorStep + m * minorStep] = pixel;
    }
  }
}

}  // namespace quintara
