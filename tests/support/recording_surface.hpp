#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.hpp"
#include "values/errors.hpp"

namespace quintara::test {

/// Writes down every drawing call as one line of text, and keeps a scale as a picture box does.
template <class Base>
struct Recording : Base {
  float pixelWidth = 401;
  float pixelHeight = 511;
  bool failDrawing = false;
  bool outOfMemory = false;
  std::vector<std::string> calls;

  void Cls() override { calls.emplace_back("cls"); }
  void setScaleModePixels() override { unitX = unitY = 1; }
  void Scale(float x1, float y1, float x2, float y2) override {
    calls.push_back("scale " + point(x1, y1) + " " + point(x2, y2));
    unitX = (x2 - x1) / pixelWidth;
    unitY = (y2 - y1) / pixelHeight;
  }
  [[nodiscard]] float ScaleWidth() const override { return unitX * pixelWidth; }
  [[nodiscard]] float ScaleHeight() const override { return unitY * pixelHeight; }
  void Line(float x1, float y1, float x2, float y2, Colour colour, BoxMode box) override {
    if (failDrawing) throw RuntimeError(ErrorKind::Overflow);
    if (outOfMemory) throw std::bad_alloc();
    char colourText[8];
    std::snprintf(colourText, sizeof colourText, " %06X", colour.bgr);
    calls.push_back(box == BoxMode::None ? "line " : box == BoxMode::Filled ? "fill " : "box ");
    calls.back() += point(x1, y1) + " " + point(x2, y2) + colourText;
    if (style != DrawStyle::Solid) calls.back() += style == DrawStyle::Dot ? " dot" : " dash";
  }
  void setDrawStyle(DrawStyle value) override { style = value; }
  void setCurrentX(float value) override { x = value; }
  void setCurrentY(float value) override { y = value; }
  void Print(std::string_view text) override {
    calls.push_back("print " + point(x, y) + " [" + std::string(text) + "]");
  }

  /// The calls that begin with `start` and end with `end` (a line ends with its colour, as six hex
  /// digits BBGGRR, and its style).
  [[nodiscard]] std::vector<std::string> with(std::string_view start,
                                              std::string_view end = "") const {
    std::vector<std::string> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const auto& call) { return call.starts_with(start) && call.ends_with(end); });
    return found;
  }

  static std::string point(float x, float y) {
    char text[64];
    std::snprintf(text, sizeof text, "%.7g,%.7g", static_cast<double>(x), static_cast<double>(y));
    return text;
  }
  float unitX = 1, unitY = 1, x = 0, y = 0;
  DrawStyle style = DrawStyle::Solid;
};

using RecordingSurface = Recording<DrawingSurface>;

}  // namespace quintara::test
