#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "platform/drawing_surface.hpp"
#include "target.hpp"

namespace quintara::fuzz {

/// Draws nothing, but sees to it that a drawing ends and that every coordinate is a number.
class CheckingSurface : public DrawingSurface {
 public:
  CheckingSurface(float pixelWidth, float pixelHeight)
      : pixelWidth_(pixelWidth), pixelHeight_(pixelHeight) {}

  void Cls() override { priceLines_ = 0; }
  void setScaleModePixels() override {
    width_ = pixelWidth_;
    height_ = pixelHeight_;
  }
  void Scale(float x1, float y1, float x2, float y2) override {
    checkPoints(x1, y1, x2, y2);
    width_ = x2 - x1;
    height_ = y2 - y1;
  }
  [[nodiscard]] float ScaleWidth() const override { return width_; }
  [[nodiscard]] float ScaleHeight() const override { return height_; }
  void Line(float x1, float y1, float x2, float y2, Colour, BoxMode) override {
    checkPoints(x1, y1, x2, y2);
    // Price lines are the dotted ones that go across.
    if (style_ == DrawStyle::Dot && x1 != x2) {
      check(++priceLines_ <= kMostPriceLines, "a grid has at most 1,000 price lines");
    }
  }
  void setDrawStyle(DrawStyle style) override { style_ = style; }
  void setCurrentX(float x) override { checkPoints(x); }
  void setCurrentY(float y) override { checkPoints(y); }
  void Print(std::string_view text) override { longest_ = std::max(longest_, text.size()); }

  [[nodiscard]] std::size_t priceLines() const { return priceLines_; }
  [[nodiscard]] std::size_t longestLabel() const { return longest_; }

 private:
  static constexpr std::size_t kMostPriceLines = 1000;

  template <typename... Coordinates>
  static void checkPoints(Coordinates... coordinates) {
    check((std::isfinite(coordinates) && ...), "every coordinate is a finite number");
  }

  float pixelWidth_;
  float pixelHeight_;
  float width_ = pixelWidth_;
  float height_ = pixelHeight_;
  DrawStyle style_ = DrawStyle::Solid;
  std::size_t priceLines_ = 0;
  std::size_t longest_ = 0;
};

}  // namespace quintara::fuzz
