#pragma once

#include <cstddef>
#include <memory>

#include "platform/platform.hpp"

namespace quintara::bench {

/// A chart's size, in pixels, and how many bars it shows at which spacing.
struct ChartSize {
  int width, height;
  std::int16_t shown, spacing;
};
inline constexpr ChartSize kChartSizes[] = {
    {401, 511, 134, 3}, {1440, 900, 480, 3}, {1920, 1080, 1880, 1}, {3840, 2160, 3800, 1}};
inline constexpr std::size_t kRowCounts[] = {500, 5000};

/// Everything of one chart that is redrawn over and over.
class RedrawScene {
 public:
  explicit RedrawScene(const ChartSize& size);
  ~RedrawScene();
  /// DrawChart with grid and labels and 24 level lines, in a range changed from the last one's.
  void redraw();
  /// One memset of the same image.
  void fill();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

/// Downloaded rows that become a series and a range.
class SeriesScene {
 public:
  explicit SeriesScene(std::size_t rows);
  ~SeriesScene();
  void build();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

/// The calculator with all eight points given, on real labels.
class CalculateScene {
 public:
  explicit CalculateScene(Toolkit& toolkit);
  ~CalculateScene();
  void calculate();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

/// The pointer moving from bar to bar, on real labels.
class HoverScene {
 public:
  HoverScene(Platform& platform, std::size_t rows);
  ~HoverScene();
  void move();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace quintara::bench
