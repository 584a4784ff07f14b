#include "platform/raster.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <tuple>

namespace quintara {

constexpr Colour kGreen{0x00FF00};

/// Knows one shape, two rows of two pixels, and remembers what was asked for.
struct FakeGlyphs final : GlyphSource {
  Glyph shape{1, 1, 2, 2, 3, {255, 51, 51, 0}};
  std::u32string asked;
  const Glyph& glyph(char32_t character) override { return asked += character, shape; }
  [[nodiscard]] int lineHeight() const override { return 6; }
};

struct Box {
  FakeGlyphs glyphs;
  Raster raster{glyphs, {0}, {0xFFFFFF}};
  Box(int width, int height, double ratio = 1) { raster.resize(width, height, ratio); }
  auto pixel(int x, int y) const { return raster.pixels()[y * raster.stride() / 4 + x]; }
  /// The rows from the top, each ended by a bar: '.' background, '#' any colour.
  [[nodiscard]] std::string picture() const {
    std::string rows;
    for (int y = 0; y < raster.deviceHeight(); ++y, rows += '|')
      for (int x = 0; x < raster.deviceWidth(); ++x) rows += pixel(x, y) == 0xFF000000U ? '.' : '#';
    return rows;
  }
};

constexpr auto N = BoxMode::None, B = BoxMode::Outline, BF = BoxMode::Filled;
constexpr auto Solid = DrawStyle::Solid, Dash = DrawStyle::Dash, Dot = DrawStyle::Dot;

TEST(RasterTest, DrawsTheNearestDevicePixels) {
  using Ends = std::array<float, 4>;
  const std::tuple<const char*, int, int, double, BoxMode, DrawStyle, Ends, const char*> cases[] = {
      {"1.25", 4, 2, 1.25, N, Solid, {1.4F, .6F, 2.6F, 1.1F}, ".....|..##.|.....|"},
      {"outline", 5, 4, 1, B, Solid, {4, 3, 1, 0}, ".####|.#..#|.#..#|.####|"},
      {"2 outline", 3, 3, 2, B, Solid, {0, 0, 2, 2}, "######|######|##..##|##..##|######|######|"},
      {"dots on the grid", 8, 1, 1, N, Dot, {1, 0, 7, 0}, "...#..#.|"},
      {"far", 12, 1, 1.6, N, Dash, {-9e9F, 0, 9e9F, 0}, "############......#|############......#|"},
      {"outline far beyond", 3, 2, 1, B, Solid, {0, -5e5F, 2, 5e5F}, "#.#|#.#|"},
      {"dashed outline", 9, 3, 1, B, Dash, {0, 0, 7, 2}, "######.#.|#......#.|######.#.|"},
      {"filled has no pattern", 4, 1, 1, BF, Dot, {0, 0, 2, 0}, "###.|"},
      {"last end far", 3, 3, 1, N, Solid, {0, 0, 1e31F, 3e31F}, "#..|#..|.#.|"},
      {"shallow cut", 6, 3, 1, N, Dot, {-9, -1, 16, 4}, "......|#..#..|......|"},
      {"not a number", 3, 1, 1, BF, Solid, {NAN, 0, 2, 0}, "...|"},
  };
  for (const auto& [name, width, height, ratio, mode, style, ends, expected] : cases) {
    Box box(width, height, ratio);
    box.raster.setDrawStyle(style);
    box.raster.Line(ends[0], ends[1], ends[2], ends[3], kGreen, mode);
    EXPECT_EQ(box.picture(), expected) << name;
  }
}

TEST(RasterTest, PointReadsBackThePixelUnderTheMouse) {
  const std::pair<float, float> scales[] = {
      {25.5F, 24}, {1e-3F, 0}, {50001.25F, 50000}, {-3, 7}, {1e30F, -1e30F}};
  for (const double ratio : {1.0, 1.25, 1.4, 1.5, 2.0, 3.0})
    for (const auto& [top, bottom] : scales) {
      Box box(60, 50, ratio);
      box.raster.Scale(60, top, 0, bottom);
      const int width = box.raster.deviceWidth();
      for (int i = 0; i < width * box.raster.deviceHeight(); ++i) {
        const auto at = box.raster.toUser((i % width + 0.7) / ratio, i / width / ratio);
        box.raster.Line(at.x, at.y, at.x, at.y, {0x123456});
        ASSERT_EQ(box.pixel(i % width, i / width), 0xFF563412U) << ratio << ' ' << top << ' ' << i;
        ASSERT_EQ(box.raster.Point(at.x, at.y), 0x123456);
        box.raster.Cls();
      }
    }
  const Box box(4, 3);
  for (const auto& [x, y] : {std::pair{-1.F, 0.F}, {4.F, 0.F}, {0.F, -.6F}, {0.F, 3.F}, {0.F, NAN}})
    EXPECT_EQ(box.raster.Point(x, y), -1) << x << ' ' << y;
}

TEST(RasterTest, AResizeKeepsPictureCornerAndUnitSizeAndAScaleMayHaveNoExtent) {
  Box box(6, 4);
  box.raster.Scale(6, 40, 0, 0);
  box.raster.Line(6, 20, 0, 20, kGreen);
  EXPECT_TRUE(box.raster.takeDamage());
  EXPECT_FALSE(box.raster.takeDamage());
  box.raster.resize(8, 3, 1);
  EXPECT_TRUE(box.raster.takeDamage());
  EXPECT_EQ(box.picture(), "........|........|######..|");
  EXPECT_EQ(std::pair(box.raster.ScaleWidth(), box.raster.ScaleHeight()), std::pair(-8.F, -30.F));
  EXPECT_EQ(box.raster.Point(1, 20), 0x00FF00);
  box.raster.resize(5, 2, 1.5);
  EXPECT_EQ(box.picture(), "........|........|........|");
  box.raster.resize(4, 3, 1);
  box.raster.Scale(4, 7, 0, 7);
  box.raster.Line(3, 6, 1, 1e38F, kGreen);
  EXPECT_EQ(box.picture(), ".###|....|....|");
}

TEST(RasterTest, TextRunsRightwardsAndMovesToTheNextLine) {
  Box box(8, 9);
  box.raster.Scale(8, 90, 0, 0);
  box.raster.Line(8, 80, 0, 80, {0x0000FF});
  box.raster.setCurrentX(6);
  box.raster.setCurrentY(90);
  box.raster.Print("AAA");
  box.raster.Scale(3, 90, -5, 0);
  box.raster.Print("A");
  EXPECT_EQ(box.picture(),
            "........|########|...#..#.|........|........|........|........|....##..|....#...|");
  EXPECT_EQ(box.pixel(4, 1), 0xFFFF3333U);  // a fifth of white over red
  EXPECT_EQ(box.glyphs.asked, U"A");        // a plain character is asked for once
  Box bytes(200, 5);
  bytes.raster.Print("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80|\xE2\x82|\xC1\x81|\xED\xA0\x80|\xC3");
  EXPECT_EQ(bytes.glyphs.asked,
            U"\u00E9\u20AC\U0001F600|\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
}

}  // namespace quintara
