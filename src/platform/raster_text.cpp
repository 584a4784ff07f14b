#include <cmath>

#include "platform/raster.hpp"

namespace quintara {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// Takes the first character off the text; a byte that starts none is a replacement character.
char32_t takeCharacter(std::string_view& text) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned lead = byte(0);
  // Continuation bytes and the smallest character that needs them, by the lead byte.
  struct Form {
    std::size_t more;
    char32_t smallest;
  };
  const Form form = lead < 0x80               ? Form{0, 0}
                    : (lead & 0xE0U) == 0xC0U ? Form{1, 0x80}
                    : (lead & 0xF0U) == 0xE0U ? Form{2, 0x800}
                    : (lead & 0xF8U) == 0xF0U ? Form{3, 0x10000}
                                              : Form{0, 0x110000};
  char32_t character = form.more == 0 ? lead : lead & (0x3FU >> form.more);
  bool whole = form.more < text.size();
  for (std::size_t i = 1; whole && i <= form.more; ++i) {
    whole = (byte(i) & 0xC0U) == 0x80U;
    character = character << 6U | (byte(i) & 0x3FU);
  }
  const bool surrogate = character >= 0xD800 && character < 0xE000;
  const bool valid = whole && character >= form.smallest && character < 0x110000 && !surrogate;
  text.remove_prefix(valid ? form.more + 1 : 1);
  return valid ? character : kReplacement;
}

/// Each channel of `under` moved towards `over`; coverage 0 to 255.
std::uint32_t mixed(std::uint32_t under, std::uint32_t over, std::uint32_t coverage) {
  std::uint32_t result = 0xFF000000U;
  for (const unsigned shift : {0U, 8U, 16U}) {
    const std::uint32_t sum =
        (over >> shift & 0xFFU) * coverage + (under >> shift & 0xFFU) * (255U - coverage);
    result |= (sum + 127U) / 255U << shift;
  }
  return result;
}

}  // namespace

void Raster::updateTextShades() {
  for (std::uint32_t coverage = 0; coverage < textShades_.size(); ++coverage) {
    textShades_[coverage] = mixed(background_, foreground_, coverage);
  }
}

void Raster::Print(std::string_view text) {
  const double left = x_.device(currentX_);
  const double top = y_.device(currentY_);
  currentX_ = 0;
  currentY_ += glyphs_->lineHeight() / ratio_ * y_.unit;
  if (std::isnan(left) || std::isnan(top)) {
    return;
  }
  damaged_ = true;
  int pen = nearestPixel(left);
  const int line = nearestPixel(top);
  while (!text.empty() && pen < image_.width()) {
    const Glyph& next = glyph(takeCharacter(text));
    blend(next, pen + next.left, line + next.top);
    pen += next.advance;
  }
}

const Glyph& Raster::glyph(char32_t character) {
  if (character >= asciiGlyphs_.size()) {
    return glyphs_->glyph(character);
  }
  const Glyph*& known = asciiGlyphs_[character];
  if (known == nullptr) {
    known = &glyphs_->glyph(character);
  }
  return *known;
}

void Raster::blend(const Glyph& glyph, int left, int top) {
  const PixelRect area = image_.clipped({left, top, left + glyph.width, top + glyph.height});
  for (int y = area.top; y < area.bottom; ++y) {
    const std::uint8_t* const coverage =
        glyph.coverage.data() + std::ptrdiff_t{y - top} * glyph.width;
    std::uint32_t* const line = image_.row(y);
    for (int x = area.left; x < area.right; ++x) {
      const std::uint8_t share = coverage[x - left];
      line[x] = line[x] == background_ ? textShades_[share] : mixed(line[x], foreground_, share);
    }
  }
}

}  // namespace quintara
