#pragma once

#include <QFont>
#include <unordered_map>

#include "platform/raster.hpp"

namespace quintara {

/// Characters of a form font as coverage, at a display scale's device pixels.
class QtGlyphs final : public GlyphSource {
 public:
  explicit QtGlyphs(const QFont& font) : formFont_(font) { setScale(1); }
  /// Drops what was rendered at another scale.
  void setScale(double devicePixelRatio);

  [[nodiscard]] const Glyph& glyph(char32_t character) override;
  [[nodiscard]] int lineHeight() const override { return lineHeight_; }

 private:
  [[nodiscard]] Glyph render(char32_t character) const;

  const QFont formFont_;
  QFont font_;
  double scale_ = 0;
  int ascent_ = 0;
  int lineHeight_ = 0;
  std::unordered_map<char32_t, Glyph> rendered_;
};

}  // namespace quintara
