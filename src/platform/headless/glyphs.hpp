#pragma once

#include <memory>
#include <unordered_map>

#include "platform/raster.hpp"

namespace quintara {

/// Characters of the form font as coverage, for one display scale. The shades are few, so that a
/// picture with text in it gets along with a palette.
class FreeTypeGlyphs final : public GlyphSource {
 public:
  /// Throws std::runtime_error when there is no font to be had.
  explicit FreeTypeGlyphs(double devicePixelRatio, float points = 8.25F, bool bold = false);
  ~FreeTypeGlyphs() override;

  [[nodiscard]] const Glyph& glyph(char32_t character) override;
  [[nodiscard]] int lineHeight() const override { return lineHeight_; }

 private:
  struct Fonts;
  [[nodiscard]] Glyph render(char32_t character);

  std::unique_ptr<Fonts> fonts_;
  int ascent_ = 0;
  int lineHeight_ = 0;
  std::unordered_map<char32_t, Glyph> rendered_;
};

/// For texts that nobody reads: all are empty.
class NoGlyphs : public GlyphSource {
 public:
  [[nodiscard]] const Glyph& glyph(char32_t /*character*/) override { return empty_; }
  [[nodiscard]] int lineHeight() const override { return 0; }

 private:
  const Glyph empty_{};
};

}  // namespace quintara
