#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/drawing_surface.hpp"
#include "platform/raster_image.hpp"

namespace quintara {

/// A character as rendered: coverage 0 to 255 a device pixel, row by row.
struct Glyph {
  int left;  ///< device pixels from the pen position to the first column
  int top;   ///< device pixels from the top of the text line to the first row
  int width;
  int height;
  int advance;  ///< device pixels to the next pen position
  std::vector<std::uint8_t> coverage;
};

/// Renders characters on first use and keeps them: a glyph stays where it is until the display
/// scale changes, which every raster learns by its resize.
class GlyphSource {
 public:
  virtual ~GlyphSource() = default;
  [[nodiscard]] virtual const Glyph& glyph(char32_t character) = 0;
  [[nodiscard]] virtual int lineHeight() const = 0;  ///< device pixels
};

/// The picture box's retained image: user coordinates in, device pixels out.
///
/// Owns the pixels and the coordinate scale. A stroke is a whole number of device pixels thick, the
/// same for every line at one ratio, and grows rightwards and downwards from the pixel its
/// position is nearest to. All arithmetic up to the clipping is in double precision.
class Raster final : public DrawingSurface {
 public:
  /// An image of no size. The glyph source must outlive it.
  Raster(GlyphSource& glyphs, Colour background, Colour foreground);

  /// Sizes are logical pixels, 0 included. The picture stays at the top-left, but is dropped when
  /// the ratio changes; the scale keeps its top-left corner and its unit size.
  void resize(int logicalWidth, int logicalHeight, double devicePixelRatio);

  void Cls() override;
  void setScaleModePixels() override;
  void Scale(float x1, float y1, float x2, float y2) override;
  [[nodiscard]] float ScaleWidth() const override;
  [[nodiscard]] float ScaleHeight() const override;
  void Line(float x1, float y1, float x2, float y2, Colour colour,
            BoxMode box = BoxMode::None) override;
  void setDrawStyle(DrawStyle style) override;
  void setCurrentX(float x) override { currentX_ = x; }
  void setCurrentY(float y) override { currentY_ = y; }
  void Print(std::string_view text) override;

  /// The colour at a position in user coordinates as 0x00BBGGRR, or -1 outside the image.
  [[nodiscard]] std::int32_t Point(float x, float y) const;

  struct UserPosition {
    float x, y;
  };
  /// The user coordinates of the device pixel under a mouse position in logical pixels. Point reads
  /// that pixel back, as long as a pixel is more than two steps of the single-precision price.
  [[nodiscard]] UserPosition toUser(double logicalX, double logicalY) const;
  struct LogicalPosition {
    double x, y;
  };
  /// Where the device pixel of a position in user coordinates begins, in logical pixels.
  [[nodiscard]] LogicalPosition toLogical(float x, float y) const;
  /// The user coordinate of the row that lies so many logical pixels below that of `y`, or of the
  /// image's first or last row.
  [[nodiscard]] float below(float y, int logicalPixels) const;

  /// The image as 0xFFRRGGBB, rows `stride()` bytes apart; valid until the next resize.
  [[nodiscard]] const std::uint32_t* pixels() const { return image_.row(0); }
  [[nodiscard]] int deviceWidth() const { return image_.width(); }
  [[nodiscard]] int deviceHeight() const { return image_.height(); }
  [[nodiscard]] std::ptrdiff_t stride() const {
    return image_.stride() * static_cast<std::ptrdiff_t>(sizeof(std::uint32_t));
  }
  /// Whether the image may have changed since the last call.
  [[nodiscard]] bool takeDamage();

 private:
  /// One direction of the user scale.
  struct Axis {
    double origin = 0;   ///< user coordinate of the first device pixel
    double unit = 1;     ///< user units per logical pixel, signed
    double perUnit = 1;  ///< device pixels per user unit; 0 where the scale has no extent
    void set(double newOrigin, double newUnit, double ratio);
    [[nodiscard]] double device(double user) const { return (user - origin) * perUnit; }
  };
  struct Segment {
    double x1, y1, x2, y2;  ///< device pixels, unclipped
  };

  void slopedLine(const Segment& line, std::uint32_t pixel);
  void updatePattern();
  void updateTextShades();
  const Glyph& glyph(char32_t character);
  void blend(const Glyph& glyph, int left, int top);

  GlyphSource* glyphs_;
  std::array<const Glyph*, 128> asciiGlyphs_{};
  std::uint32_t background_;
  std::uint32_t foreground_;
  /// The foreground over the bare background by coverage: what nearly all of a text is made of.
  std::array<std::uint32_t, 256> textShades_{};
  RasterImage image_;
  int logicalWidth_ = 0;
  int logicalHeight_ = 0;
  double ratio_ = 1;
  int thickness_ = 1;
  Axis x_;
  Axis y_;
  double currentX_ = 0;
  double currentY_ = 0;
  DrawStyle style_ = DrawStyle::Solid;
  StrokePattern pattern_{1, 1};
  bool damaged_ = false;
};

}  // namespace quintara
