#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace quintara {

/// Device pixels from left/top up to, but without, right/bottom. Empty unless both grow.
struct PixelRect {
  int left, top, right, bottom;
};

/// The nearest device pixel to a position that is a number. One far off every image stays far off,
/// but near enough for sums. Halves go up, also when rounding noise has made them a little less.
inline int nearestPixel(double device) {
  constexpr int kFar = 1 << 20;
  const double near = device < -kFar ? -kFar : device > kFar ? kFar : device;
  return static_cast<int>(near + (kFar + 0.5)) - kFar;  // std::floor would be a call
}

/// The on and off lengths of a stroke's pattern, in device pixels. It starts at the image's
/// first column or row, whatever the stroke: parallel strokes have their gaps side by side.
struct StrokePattern {
  int on, period;

  [[nodiscard]] bool isSolid() const { return on == period; }
  [[nodiscard]] bool isOn(int position) const { return position % period < on; }
};

/// Owns a buffer of RGB32 pixels and fills rectangles of it. Everything is clipped to the image.
class RasterImage {
 public:
  /// What was in the image stays at the top-left; new pixels get `background`.
  void resize(int width, int height, std::uint32_t background);
  void clear(std::uint32_t pixel);

  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }
  /// Pixels from a row to the one below.
  [[nodiscard]] std::ptrdiff_t stride() const { return stride_; }
  [[nodiscard]] std::uint32_t* row(int y) const { return pixels_.get() + y * stride_; }

  [[nodiscard]] PixelRect clipped(const PixelRect& rect) const {
    return {std::max(rect.left, 0), std::max(rect.top, 0), std::min(rect.right, width_),
            std::min(rect.bottom, height_)};
  }
  void fill(const PixelRect& rect, std::uint32_t pixel);
  /// The rows, or the columns, of the rectangle that the pattern has on.
  void fillRows(const PixelRect& rect, StrokePattern pattern, std::uint32_t pixel);
  void fillColumns(const PixelRect& rect, StrokePattern pattern, std::uint32_t pixel);
  /// Four strokes of this thickness inside the rectangle's border.
  void outline(const PixelRect& rect, int thickness, StrokePattern pattern, std::uint32_t pixel);

 private:
  struct Free {
    void operator()(std::uint32_t* pixels) const { std::free(pixels); }
  };
  using Pixels = std::unique_ptr<std::uint32_t, Free>;
  static Pixels allocate(std::size_t count);
  void fillEvery(int step, const PixelRect& area, std::uint32_t pixel);
  /// Several times as fast as the compiler's loop: the C library picks the machine's widest stores.
  static void fillRun(std::uint32_t* first, std::ptrdiff_t count, std::uint32_t pixel);

  Pixels pixels_;
  int width_ = 0;
  int height_ = 0;
  std::ptrdiff_t stride_ = 0;
};

inline void RasterImage::fill(const PixelRect& rect, std::uint32_t pixel) {
  fillEvery(1, clipped(rect), pixel);
}

inline void RasterImage::fillEvery(int step, const PixelRect& area, std::uint32_t pixel) {
  const int width = area.right - area.left;
  const std::ptrdiff_t first = area.top * stride_ + area.left;
  const std::ptrdiff_t last = area.bottom * stride_ + area.left;
  const std::ptrdiff_t ahead = step * stride_;
  std::uint32_t* const pixels = pixels_.get();
  // Candles are up to three pixels wide, a call of the library for each row would cost more.
  if (width == 1) {
    for (std::ptrdiff_t i = first; i < last; i += ahead) {
      pixels[i] = pixel;
    }
  } else if (width == 2) {
    for (std::ptrdiff_t i = first; i < last; i += ahead) {
      pixels[i] = pixels[i + 1] = pixel;
    }
  } else if (width == 3) {
    for (std::ptrdiff_t i = first; i < last; i += ahead) {
      pixels[i] = pixels[i + 1] = pixels[i + 2] = pixel;
    }
  } else if (width > 3) {
    for (std::ptrdiff_t i = first; i < last; i += ahead) {
      fillRun(pixels + i, width, pixel);
    }
  }
}

}  // namespace quintara
