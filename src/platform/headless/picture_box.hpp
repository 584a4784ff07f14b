#pragma once

#include <string>

#include "platform/raster.hpp"
#include "platform/window.hpp"

namespace quintara {

/// A picture box whose image is there to be read: the raster of the window's, at a display scale of
/// the maker's choice.
class HeadlessPictureBox final : public PictureBox {
 public:
  /// The glyphs, rendered for the ratio, must outlive the control.
  HeadlessPictureBox(const ControlDesign& design, GlyphSource& glyphs, double devicePixelRatio);

  [[nodiscard]] const Raster& raster() const { return raster_; }
  [[nodiscard]] const std::string& description() const { return description_; }

  [[nodiscard]] float Left() const override { return left_; }
  [[nodiscard]] float Top() const override { return top_; }
  void Move(float left, float top, float width, float height) override;
  [[nodiscard]] std::int32_t Point(float x, float y) const override { return raster_.Point(x, y); }
  void setDescription(std::string_view text) override { description_ = text; }

  void Cls() override { raster_.Cls(); }
  void setScaleModePixels() override { raster_.setScaleModePixels(); }
  void Scale(float x1, float y1, float x2, float y2) override { raster_.Scale(x1, y1, x2, y2); }
  [[nodiscard]] float ScaleWidth() const override { return raster_.ScaleWidth(); }
  [[nodiscard]] float ScaleHeight() const override { return raster_.ScaleHeight(); }
  void Line(float x1, float y1, float x2, float y2, Colour colour, BoxMode box) override {
    raster_.Line(x1, y1, x2, y2, colour, box);
  }
  void setDrawStyle(DrawStyle style) override { raster_.setDrawStyle(style); }
  void setCurrentX(float x) override { raster_.setCurrentX(x); }
  void setCurrentY(float y) override { raster_.setCurrentY(y); }
  void Print(std::string_view text) override { raster_.Print(text); }

 private:
  bool fitRaster(float width, float height);

  const double ratio_;
  float left_;
  float top_;
  int width_ = 0;  ///< logical pixels
  int height_ = 0;
  Raster raster_;
  std::string description_;
};

}  // namespace quintara
