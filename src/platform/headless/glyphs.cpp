#include "platform/headless/glyphs.hpp"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cmath>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/form_font.hpp"
#include "platform/headless/font_files.hpp"

namespace quintara {
namespace {

/// FreeType counts in 64ths of a pixel.
int wholePixels(FT_Pos position) { return static_cast<int>((position + 32) >> 6); }

/// The nearest of 16 shades, from nothing to full.
std::uint8_t shade(std::uint8_t coverage) {
  constexpr int kStep = 17;
  return static_cast<std::uint8_t>((coverage + kStep / 2) / kStep * kStep);
}

}  // namespace

/// The form font and the fonts that stand in for it, all at one size.
struct FreeTypeGlyphs::Fonts {
  Fonts(int pixelSize, bool isBold) : pixels(pixelSize), bold(isBold) {
    if (FT_Init_FreeType(&library) != 0) {
      throw std::runtime_error("the font library cannot be used");
    }
    form = open(formFontFile(bold));
    if (form == nullptr) {
      FT_Done_FreeType(library);
      throw std::runtime_error("there is no font; install one, such as Liberation Sans");
    }
  }
  Fonts(const Fonts&) = delete;
  Fonts& operator=(const Fonts&) = delete;
  ~Fonts() { FT_Done_FreeType(library); }

  FT_Face open(const FontFile& file) {
    const auto [known, isNew] = faces.try_emplace({file.path, file.face}, nullptr);
    if (isNew && !file.path.empty() &&
        FT_New_Face(library, file.path.c_str(), file.face, &known->second) == 0) {
      FT_Set_Pixel_Sizes(known->second, 0, static_cast<FT_UInt>(pixels));
    }
    return known->second;
  }

  /// One that has the character, or else the form font, which then shows its empty box.
  FT_Face faceFor(char32_t character) {
    if (FT_Get_Char_Index(form, character) != 0) {
      return form;
    }
    FT_Face const other = open(fontFileFor(character, bold));
    return other != nullptr && FT_Get_Char_Index(other, character) != 0 ? other : form;
  }

  const int pixels;
  const bool bold;
  FT_Library library = nullptr;
  FT_Face form = nullptr;
  std::map<std::pair<std::string, int>, FT_Face> faces;  ///< the library closes them
};

FreeTypeGlyphs::FreeTypeGlyphs(double devicePixelRatio, float points, bool bold) {
  const auto pixels = static_cast<int>(std::lround(formFontPixels(points) * devicePixelRatio));
  fonts_ = std::make_unique<Fonts>(pixels, bold);
  // The font's own measures, each rounded, as the window has them; a size's are larger.
  const FT_Face form = fonts_->form;
  const auto measure = [&](FT_Short units) {
    return wholePixels(FT_MulDiv(units, FT_Long{pixels} * 64, form->units_per_EM));
  };
  ascent_ = measure(form->ascender);
  lineHeight_ = ascent_ - measure(form->descender);
}

FreeTypeGlyphs::~FreeTypeGlyphs() = default;

const Glyph& FreeTypeGlyphs::glyph(char32_t character) {
  const auto known = rendered_.find(character);
  if (known != rendered_.end()) {
    return known->second;
  }
  return rendered_.emplace(character, render(character)).first->second;
}

Glyph FreeTypeGlyphs::render(char32_t character) {
  FT_Face const face = fonts_->faceFor(character);
  Glyph glyph{};
  if (FT_Load_Char(face, character, FT_LOAD_RENDER | FT_LOAD_TARGET_LIGHT) != 0) {
    return glyph;
  }
  const FT_GlyphSlot slot = face->glyph;
  glyph.advance = wholePixels(slot->advance.x);
  if (slot->bitmap.pixel_mode != FT_PIXEL_MODE_GRAY) {
    return glyph;
  }
  glyph.left = slot->bitmap_left;
  glyph.top = ascent_ - slot->bitmap_top;
  glyph.width = static_cast<int>(slot->bitmap.width);
  glyph.height = static_cast<int>(slot->bitmap.rows);
  for (int y = 0; y < glyph.height; ++y) {
    const std::uint8_t* const row = slot->bitmap.buffer + std::ptrdiff_t{y} * slot->bitmap.pitch;
    for (int x = 0; x < glyph.width; ++x) {
      glyph.coverage.push_back(shade(row[x]));
    }
  }
  return glyph;
}

}  // namespace quintara
