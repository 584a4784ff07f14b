#include "platform/raster.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <tuple>

namespace quintara {

using Ends = std::array<float, 4>;
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
  const std::tuple<const char*, int, int, double, BoxMode, DrawStyle, Ends, const char*> cases[] = {
      {"1.25", 4, 2, 1.25, N, Solid, {1.4F, .6F, 2.6F, 1.1F}, ".....|..##.|.....|"},
      {"outline", 5, 4, 1, B, Solid, {4, 3, 1, 0}, ".####|.#..#|.#..#|.####|"},
      {"2 outline", 3, 3, 2, B, Solid, {0, 0, 2, 2}, "######|######|##..##|##..##|######|######|"},
      {"dots on the grid", 8, 1, 1, N, Dot, {1, 0, 7, 0}, "...#..#.|"},
      {"dots down it", 1, 7, 1, N, Dot, {0, 1, 0, 7}, ".|.|.|#|.|.|#|"},
      {"outline over the edge", 3, 3, 1, B, Solid, {-1, 0, 3, 2}, "###|...|###|"},
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
      box.raster.Scale(120, top, 0, bottom);
      const int width = box.raster.deviceWidth();
      for (int i = 0; i < width * box.raster.deviceHeight(); ++i) {
        const auto at = box.raster.toUser((i % width + 0.7) / ratio, i / width / ratio);
        box.raster.Line(at.x, at.y, at.x, at.y, {0x123456});
        ASSERT_EQ(box.pixel(i % width, i / width), 0xFF563412U) << ratio << ' ' << top << ' ' << i;
        ASSERT_EQ(box.raster.Point(at.x, at.y), 0x123456);
        const auto begin = box.raster.toLogical(at.x, at.y);
        ASSERT_EQ(std::pair(begin.x, begin.y), std::pair(i % width / ratio, i / width / ratio));
        const int down = i % 120 - 60;  // whole rows of the picture, and no change for none
        const double row = i / width + std::round(down * ratio),
                     last = box.raster.deviceHeight() - 1;
        const float below = box.raster.below(at.y, down);
        ASSERT_EQ(box.raster.toLogical(at.x, below).y, std::clamp(row, 0.0, last) / ratio);
        ASSERT_TRUE(down != 0 || below == at.y);
        box.raster.Cls();
      }
    }
  const Box box(4, 3);
  for (const auto& [x, y] :
       {std::pair{-1.F, 0.F}, {4.F, 0.F}, {0.F, -.6F}, {0.F, 3.F}, {0.F, NAN}, {NAN, 0.F}})
    EXPECT_EQ(box.raster.Point(x, y), -1) << x << ' ' << y;
}

TEST(RasterTest, NothingIsDrawnBeforeItHasASize) {
  FakeGlyphs glyphs;
  Raster raster{glyphs, {0}, {0xFFFFFF}};
  raster.Cls();
  raster.Line(0, 0, 5, 5, kGreen, BF);
  raster.Line(0, 0, 5, 3, kGreen);
  raster.Print("A");
  EXPECT_EQ(raster.Point(0, 0), -1);
}

TEST(RasterTest, AResizeKeepsPictureCornerAndUnitSizeAndAScaleMayHaveNoExtent) {
  Box box(6, 4);
  box.raster.Scale(6, 40, 0, 0);
  EXPECT_TRUE(box.raster.takeDamage());
  EXPECT_FALSE(box.raster.takeDamage());
  box.raster.Line(6, 20, 0, 20, kGreen);
  box.raster.Line(4, 40, 2, 40, kGreen);
  EXPECT_TRUE(box.raster.takeDamage());
  box.raster.resize(8, 3, 1);
  EXPECT_TRUE(box.raster.takeDamage());
  EXPECT_EQ(box.picture(), "..###...|........|######..|");
  EXPECT_EQ(std::pair(box.raster.ScaleWidth(), box.raster.ScaleHeight()), std::pair(-8.F, -30.F));
  box.raster.resize(8, 4, 1);
  EXPECT_EQ(box.picture(), "..###...|........|######..|........|");
  EXPECT_EQ(box.raster.Point(1, 20), 0x00FF00);
  box.raster.resize(5, 2, 1.5);
  EXPECT_EQ(box.picture(), "........|........|........|");
  box.raster.resize(4, 3, 1);
  box.raster.Scale(4, 7, 0, 7);
  box.raster.Line(3, 6, 1, 1e38F, kGreen);
  EXPECT_EQ(box.picture(), ".###|....|....|");
  box.raster.setScaleModePixels();
  box.raster.Line(0, 1, 2, 2, kGreen, BF);
  EXPECT_EQ(box.picture(), ".###|###.|###.|");
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
  Box twice(3, 6, 2);
  twice.raster.Print("A");
  twice.raster.Print("A");
  EXPECT_EQ(twice.picture().substr(7 * 6, 4 * 7), "......|.##...|.#....|......|");
  EXPECT_EQ(box.glyphs.asked, U"A");  // a plain character is asked for once
}

TEST(RasterTest, TextIsUtf8AndABadByteOneCharacterByItself) {
  Box whole(200, 5);
  whole.raster.Print(
      "|\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"
      "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF\xC3|");
  EXPECT_EQ(whole.glyphs.asked, (std::u32string{U'|', 0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xE000,
                                                0xFFFF, 0x10000, 0x10FFFF, 0xFFFD}));
  for (const char* bad :
       {"\x80", "\xBF\xBF", "\xC0\xBF", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
        "\xE2\x82", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xF0\x9F\x98",
        "\xF0\x9F\xC3\xC3", "\xFF"}) {
    Box box(200, 5);
    box.raster.Print(bad);
    EXPECT_EQ(box.glyphs.asked, std::u32string(std::strlen(bad), 0xFFFD));
  }
}

TEST(RasterTest, ATextIsMixedWithWhatItStandsOn) {
  constexpr std::uint32_t kText = 0xC86432;
  FakeGlyphs glyphs;
  glyphs.shape = {0, 0, 256, 1, 256, {}};
  for (int i = 0; i < 256; ++i) glyphs.shape.coverage.push_back(static_cast<std::uint8_t>(i));
  for (const std::uint32_t under : {0x402010U, 0x000000U, 0x336699U, 0xFFFFFFU}) {
    Raster raster(glyphs, {0x402010}, {kText});
    raster.resize(256, 1, 1);
    raster.Line(0, 0, 255, 0, {under});
    raster.Print("A");
    for (std::uint32_t i = 0; i < 3 * 256; ++i) {
      const std::uint32_t share = i / 3, shift = i % 3 * 8, got = raster.pixels()[share];
      const auto channel = [=](std::uint32_t colour) { return colour >> shift & 0xFFU; };
      const auto mix = channel(kText) * share + channel(under) * (255 - share);
      ASSERT_NEAR(channel(fromRgb32(got).bgr) * 255.0, mix, 127) << under << ' ' << share;
      ASSERT_EQ(got >> 24U, 255U);
    }
  }
}

TEST(RasterTest, SaysWhenItMayHaveChangedAndBeginsAnewWhenCleared) {
  Box box(9, 3);
  Raster& raster = box.raster;
  EXPECT_TRUE(raster.takeDamage());
  for (const std::size_t bad : {0, 1, 2, 3, 4, 5, 6}) {
    std::array<float, 7> at{1, 1, 5, 1, 0, 0, 0};
    at.at(bad) = NAN;
    raster.setCurrentX(at[4]);
    raster.setCurrentY(at[5]);
    bad < 4 ? raster.Line(at[0], at[1], at[2], at[3], kGreen) : raster.Print("A");
    EXPECT_EQ(raster.takeDamage(), bad == 6);
  }
  raster.setCurrentX(5);
  raster.Cls();
  EXPECT_TRUE(raster.takeDamage());
  raster.Print("A");
  raster.Line(0, 0, 0, 0, kGreen);
  EXPECT_TRUE(raster.takeDamage());
  EXPECT_EQ(box.picture(), "#........|.##......|.#.......|");
  raster.setDrawStyle(Dot);
  raster.Scale(9, 9, 0, 0);
  raster.resize(9, 1, 2);
  raster.setScaleModePixels();
  EXPECT_EQ(std::pair(raster.ScaleWidth(), raster.ScaleHeight()), std::pair(9.F, 1.F));
  raster.Line(0, 0, 9, 0, kGreen);
  EXPECT_EQ(box.picture(), "##....##....##....|##....##....##....|");
}

/// Whole numbers between two, the same on every machine.
struct Numbers {
  std::mt19937 random{1};
  int operator()(int from, int to) {
    return from + static_cast<int>(random() % static_cast<unsigned>(to - from + 1));
  }
};

TEST(RasterImageTest, FillsWhatLiesInItAndNothingElse) {
  Numbers number;
  for (int round = 0; round < 1500; ++round) {
    RasterImage image;
    image.resize(number(0, 40), number(0, 20), 1);
    const int kind = number(0, 3), thick = number(1, 3), least = kind == 3 ? thick : -3;
    const int left = number(-30, 50), right = left + number(least, 60);
    const int top = number(-30, 30), bottom = top + number(least, 40);
    const int on = number(1, 3), period = on + number(0, 2);
    kind == 0   ? image.fill({left, top, right, bottom}, 2)
    : kind == 1 ? image.fillRows({left, top, right, bottom}, {on, period}, 2)
    : kind == 2 ? image.fillColumns({left, top, right, bottom}, {on, period}, 2)
                : image.outline({left, top, right, bottom}, thick, {on, period}, 2);
    const auto stride = static_cast<int>(image.stride());
    for (int i = 0; i < stride * image.height(); ++i) {
      const int x = i % stride, y = i / stride;
      const bool row = y % period < on, column = x % period < on;
      const bool drawn = kind == 0   ? true
                         : kind == 1 ? row
                         : kind == 2 ? column
                                     : (row && (x < left + thick || x >= right - thick)) ||
                                           (column && (y < top + thick || y >= bottom - thick));
      const bool in = x >= left && x < right && y >= top && y < bottom && x < image.width();
      ASSERT_EQ(image.row(0)[i], drawn && in ? 2U : 1U) << round << ' ' << x << ' ' << y;
    }
  }
}

TEST(RasterTest, ShowsWhatALargerPictureShowsInItsPlace) {
  constexpr int kWidth = 30, kHeight = 20, kMore = 36;  // whole patterns at every ratio
  Numbers number;
  for (const double ratio : {1.0, 1.5, 2.0, 3.0}) {
    Box part(kWidth, kHeight, ratio), whole(kWidth + 2 * kMore, kHeight + 2 * kMore, ratio);
    whole.raster.Scale(-kMore, -kMore, kWidth + kMore, kHeight + kMore);
    const auto shift = static_cast<int>(kMore * ratio);
    for (int round = 0; round < 800; ++round) {
      const auto coordinate = [&] {
        return static_cast<float>(number(-200, 400)) / 4.F * (number(0, 9) == 0 ? 1e3F : 1);
      };
      const Ends ends{coordinate(), coordinate(), coordinate(), coordinate()};
      const auto [x, y] = std::pair(static_cast<float>(number(-20, 70)), coordinate());
      const auto style = DrawStyle{number(0, 2)};
      const auto mode = BoxMode{number(0, 2)};
      for (Raster* raster : {&part.raster, &whole.raster}) {
        raster->Cls();
        raster->setDrawStyle(style);
        raster->Line(ends[0], ends[1], ends[2], ends[3], kGreen, mode);
        raster->setCurrentX(x);
        raster->setCurrentY(y);
        raster->Print("AB");
      }
      for (int row = 0; row < part.raster.deviceHeight(); ++row)
        for (int column = 0; column < part.raster.deviceWidth(); ++column)
          ASSERT_EQ(part.pixel(column, row), whole.pixel(column + shift, row + shift))
              << ratio << ' ' << round << ' ' << column << ' ' << row;
    }
  }
}

TEST(RasterTest, ALineHasTheNearestPixelOfEveryColumnOrRow) {
  constexpr int kSize = 40;
  Numbers number;
  Box wide(kSize, kSize), tall(kSize, kSize);
  for (int round = 0; round < 1500; ++round) {
    Ends ends{};
    for (float& end : ends) end = static_cast<float>(number(0, kSize - 1));
    const auto [x1, y1, x2, y2] = ends;
    const float run = std::abs(x2 - x1);
    if (run == 0 || run < std::abs(y2 - y1)) continue;
    wide.raster.Cls();
    wide.raster.Line(x1, y1, x2, y2, kGreen);
    tall.raster.Cls();
    tall.raster.Line(y1, x1, y2, x2, kGreen);
    for (int i = 0; i < kSize * kSize; ++i) {
      const auto x = static_cast<float>(i % kSize), y = static_cast<float>(i / kSize);
      // How far the pixel is off the line; of two that are as near it has the later one.
      const float off = 2 * ((y - y1) * (x2 - x1) - (x - x1) * (y2 - y1)) * (x1 < x2 ? 1.F : -1.F);
      const bool within = x >= std::min(x1, x2) && x <= std::max(x1, x2);
      const auto expected = within && off > -run && off <= run ? 0xFF00FF00U : 0xFF000000U;
      ASSERT_EQ(wide.pixel(i % kSize, i / kSize), expected) << round << ' ' << i;
      ASSERT_EQ(tall.pixel(i / kSize, i % kSize), expected) << round << ' ' << i;
    }
  }
}

}  // namespace quintara
