#include "platform/headless/font_files.hpp"

#include <fontconfig/fontconfig.h>

#include <memory>

#include "platform/form_font.hpp"

namespace quintara {
namespace {

struct Destroy {
  void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
  void operator()(FcCharSet* set) const { FcCharSetDestroy(set); }
};
using Pattern = std::unique_ptr<FcPattern, Destroy>;

const FcChar8* text(const char* ascii) { return reinterpret_cast<const FcChar8*>(ascii); }

Pattern wanted(bool bold) {
  Pattern pattern(FcPatternCreate());
  for (const char* family : kFormFontFamilies) {
    FcPatternAddString(pattern.get(), FC_FAMILY, text(family));
  }
  FcPatternAddString(pattern.get(), FC_FAMILY, text("sans-serif"));
  FcPatternAddInteger(pattern.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
  return pattern;
}

FontFile bestFor(const Pattern& pattern) {
  FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
  FcDefaultSubstitute(pattern.get());
  FcResult result = FcResultNoMatch;
  const Pattern best(FcFontMatch(nullptr, pattern.get(), &result));
  FcChar8* path = nullptr;
  FontFile found;
  if (best && FcPatternGetString(best.get(), FC_FILE, 0, &path) == FcResultMatch) {
    found.path = reinterpret_cast<const char*>(path);
    FcPatternGetInteger(best.get(), FC_INDEX, 0, &found.face);
  }
  return found;
}

}  // namespace

FontFile formFontFile(bool bold) { return bestFor(wanted(bold)); }

FontFile fontFileFor(char32_t character, bool bold) {
  const std::unique_ptr<FcCharSet, Destroy> needed(FcCharSetCreate());
  FcCharSetAddChar(needed.get(), character);
  const Pattern pattern = wanted(bold);
  FcPatternAddCharSet(pattern.get(), FC_CHARSET, needed.get());
  return bestFor(pattern);
}

}  // namespace quintara
