#include <gtest/gtest.h>

#include "app/module1.hpp"
#include "platform/headless/glyphs.hpp"
#include "platform/headless/picture_box.hpp"
#include "platform/qt/make_control.hpp"
#include "platform/qt/picture_box_widget.hpp"
#include "support/fakes.hpp"
#include "support/qt/offscreen.hpp"

namespace quintara::test {
namespace {

/// The window's glyphs as full blocks: a picture with them shows where text may be.
struct Blocks final : GlyphSource {
  explicit Blocks(GlyphSource& window) : glyphs(window) {}
  const Glyph& glyph(char32_t character) override {
    block = glyphs.glyph(character);
    block.coverage.assign(block.coverage.size(), 255);
    return character < 128 ? blocks[character] = block : block;
  }
  [[nodiscard]] int lineHeight() const override { return glyphs.lineHeight(); }
  GlyphSource& glyphs;
  Glyph block{};
  std::array<Glyph, 128> blocks{};  // a raster keeps pointers to these
};

struct Drawn {
  Drawn(GlyphSource& glyphs, double ratio) : platform(glyphs, ratio, services.date) {}
  [[nodiscard]] const Raster& raster() const {
    return platform.window->control<HeadlessPictureBox>("picChart").raster();
  }
  FakePlatform services;
  HeadlessPlatform platform;
  std::unique_ptr<frmQuintara> form = Main(platform.with(services), {"history", "quotes"});
};

/// What a trader does, by the names of the controls.
void draw(const Window& window, std::int16_t type) {
  window.control<ComboBox>("cboChartType").setListIndex(type);
  window.control<TextBox>("txtTicker").setText("xyz");
  window.control<Button>("cmdChart").Click();
  for (const auto& [box, price] : {std::pair{"txtA1", "90.75"}, {"txtB1", "160"}, {"txtC1", "120"}})
    window.control<TextBox>(box).setText(price);
  window.control<Button>("cmdCalculate").Click();
  for (const char* box : {"chkShowA1", "chkA1E1", "chkA1E1618"})
    window.control<CheckBox>(box).setValue(1);
}

/// A toolkit that tells which window it made.
struct Telling : Toolkit {
  explicit Telling(Toolkit& real) : toolkit(real) {}
  std::unique_ptr<Window> newWindow(const WindowDesign& design) override {
    auto made = toolkit.newWindow(design);
    if (first == nullptr) first = made.get();
    return made;
  }
  Toolkit& toolkit;
  Window* first = nullptr;
};

std::uint32_t pixel(const Raster& raster, int x, int y) {
  return raster.pixels()[y * raster.stride() / 4 + x];
}

TEST(Headless, DrawsTheWindowsPictureButForTheInkOfItsTexts) {
  Offscreen offscreen;
  Telling toolkit(offscreen.application.platform().toolkit);
  FakePlatform services;
  Platform real = services.platform();
  const auto form = Main({toolkit, real.screen, services, services, services, services, services},
                         {"history", "quotes"});
  const auto* const chart = &Offscreen::widget<PictureBoxWidget>("picChart");
  const Raster& expected = chart->raster();
  const double ratio = chart->devicePixelRatioF();
  QtGlyphs windows(formFont(8.25F, false));
  windows.setScale(ratio);
  Blocks blocks(windows);
  FreeTypeGlyphs glyphs(ratio);
  EXPECT_EQ(glyphs.lineHeight(), windows.lineHeight());
  for (const char32_t character : U" -.,0123456789abcdefghijklmnopqrstuvwxyzJNovDec:%\u00e9") {
    const Glyph& glyph = glyphs.glyph(character);
    EXPECT_EQ(glyph.advance, windows.glyph(character).advance) << +character;
    EXPECT_EQ(glyph.coverage.size(), static_cast<std::size_t>(glyph.width * glyph.height));
  }
  Drawn headless(glyphs, ratio);
  Drawn masked(blocks, ratio);
  for (const std::int16_t type : std::vector<std::int16_t>{0, 1, 2}) {
    draw(*toolkit.first, type);
    for (Drawn* each : {&headless, &masked}) draw(*each->platform.window, type);
    ASSERT_EQ(headless.raster().deviceWidth(), expected.deviceWidth());
    ASSERT_EQ(headless.raster().deviceHeight(), expected.deviceHeight());
    int text = 0, ink = 0, inked = 0, other = 0;
    for (int y = 0; y < expected.deviceHeight(); ++y)
      for (int x = 0; x < expected.deviceWidth(); ++x) {
        const bool differs = pixel(headless.raster(), x, y) != pixel(expected, x, y);
        const bool isText = pixel(masked.raster(), x, y) == 0xFFFFFFFF;
        text += isText ? 1 : 0;
        ink += isText && pixel(expected, x, y) != 0xFF000000 ? 1 : 0;
        inked += isText && pixel(headless.raster(), x, y) != 0xFF000000 ? 1 : 0;
        other += !isText && differs ? 1 : 0;
      }
    EXPECT_EQ(other, 0) << type;
    EXPECT_LT(text, expected.deviceWidth() * expected.deviceHeight() / 20) << "nearly all compared";
    EXPECT_NEAR(inked, ink, ink / 4) << "as much text, where the window has it";
  }
}

TEST(Headless, APictureBoxTellsOfAnotherSizeAndOfNothingElse) {
  FreeTypeGlyphs glyphs(2);
  HeadlessPictureBox box({.left = 15, .top = 30, .width = 60, .height = 45}, glyphs, 2);
  std::string told;
  box.Resize = [&] {
    told += std::to_string(box.raster().deviceWidth()) + "x" +
            std::to_string(box.raster().deviceHeight()) + " ";
  };
  for (const auto& [width, height] :
       {std::pair{60.F, 45.F}, {60.F, 60.F}, {75.F, 60.F}, {75.F, 60.F}, {0.F, 0.F}}) {
    box.Move(width, height, width, height);
    EXPECT_EQ(std::pair(box.Left(), box.Top()), std::pair(width, height));
  }
  EXPECT_THROW(box.Move(1, 1, -1, 0), RuntimeError);
  EXPECT_THROW(box.Move(1, 1, 0, -1), RuntimeError);
  EXPECT_EQ(told, "8x8 10x8 0x0 ");
  EXPECT_EQ(box.Left(), 0);
}

}  // namespace
}  // namespace quintara::test
