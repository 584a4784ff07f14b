#include "platform/raster_image.hpp"

#include <sys/mman.h>

#include <algorithm>
#include <cwchar>
#include <new>
#include <utility>

namespace quintara {
namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20U;
constexpr int kPixelsPerCacheLine = 16;

/// Rows that lie a multiple of some power of two apart compete for a few places in the cache, and a
/// vertical stroke touches a cache line a row: an odd number of lines uses the whole cache.
std::ptrdiff_t strideFor(int width) {
  const int lines = (width + kPixelsPerCacheLine - 1) / kPixelsPerCacheLine;
  return static_cast<std::ptrdiff_t>(lines | 1) * kPixelsPerCacheLine;
}

/// The first position from `begin` on that is `phase` into its period.
int firstInPhase(int begin, int phase, int period) {
  const int ahead = (phase - begin) % period;
  return begin + (ahead < 0 ? ahead + period : ahead);
}

}  // namespace

RasterImage::Pixels RasterImage::allocate(std::size_t count) {
  const std::size_t bytes = (count * sizeof(std::uint32_t) / kHugePage + 1) * kHugePage;
  Pixels pixels(static_cast<std::uint32_t*>(std::aligned_alloc(kHugePage, bytes)));
  if (!pixels) {
    throw std::bad_alloc();
  }
  // A vertical stroke touches a page a row. Where huge pages are refused it only takes longer.
  static_cast<void>(madvise(pixels.get(), bytes, MADV_HUGEPAGE));
  return pixels;
}

void RasterImage::resize(int width, int height, std::uint32_t background) {
  const std::ptrdiff_t stride = strideFor(width);
  Pixels fresh = allocate(static_cast<std::size_t>(stride * height));
  const RasterImage old = std::exchange(*this, {});
  pixels_ = std::move(fresh);
  width_ = width;
  height_ = height;
  stride_ = stride;
  clear(background);
  const int keptHeight = std::min(height, old.height_);
  for (int y = 0; y < keptHeight; ++y) {
    std::copy_n(old.row(y), std::min(width, old.width_), row(y));
  }
}

void RasterImage::fillRun(std::uint32_t* first, std::ptrdiff_t count, std::uint32_t pixel) {
  static_assert(sizeof(wchar_t) == sizeof(std::uint32_t));
  std::wmemset(reinterpret_cast<wchar_t*>(first), static_cast<wchar_t>(pixel),
               static_cast<std::size_t>(count));
}

void RasterImage::clear(std::uint32_t pixel) { fillRun(row(0), stride_ * height_, pixel); }

void RasterImage::fillRows(const PixelRect& rect, StrokePattern pattern, std::uint32_t pixel) {
  if (pattern.isSolid()) {
    return fill(rect, pixel);
  }
  PixelRect area = clipped(rect);
  const int top = area.top;
  for (int phase = 0; phase < pattern.on; ++phase) {
    area.top = firstInPhase(top, phase, pattern.period);
    fillEvery(pattern.period, area, pixel);
  }
}

void RasterImage::fillColumns(const PixelRect& rect, StrokePattern pattern, std::uint32_t pixel) {
  if (pattern.isSolid()) {
    return fill(rect, pixel);
  }
  const PixelRect area = clipped(rect);
  for (int y = area.top; y < area.bottom; ++y) {
    std::uint32_t* const line = row(y);
    for (int phase = 0; phase < pattern.on; ++phase) {
      int x = firstInPhase(area.left, phase, pattern.period);
      for (; x < area.right; x += pattern.period) {
        line[x] = pixel;
      }
    }
  }
}

void RasterImage::outline(const PixelRect& rect, int thickness, StrokePattern pattern,
                          std::uint32_t pixel) {
  const auto [left, top, right, bottom] = rect;
  fillColumns({left, top, right, top + thickness}, pattern, pixel);
  fillColumns({left, bottom - thickness, right, bottom}, pattern, pixel);
  if (pattern.isSolid() && thickness == 1 && left >= 0 && right <= width_) {
    // A candle's edges lie in one cache line: one pass over the rows does for both.
    const PixelRect area = clipped(rect);
    for (int y = area.top; y < area.bottom; ++y) {
      std::uint32_t* const line = row(y);
      line[left] = line[right - 1] = pixel;
    }
    return;
  }
  fillRows({left, top, left + thickness, bottom}, pattern, pixel);
  fillRows({right - thickness, top, right, bottom}, pattern, pixel);
}

}  // namespace quintara
