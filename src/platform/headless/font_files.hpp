#pragma once

#include <string>

namespace quintara {

/// A face of a font file.
struct FontFile {
  std::string path;  ///< empty when there is none
  int face = 0;
};

/// The form font as fontconfig finds it, in regular or bold.
FontFile formFontFile(bool bold);

/// The face that stands in for a character that the form font does not have.
FontFile fontFileFor(char32_t character, bool bold);

}  // namespace quintara
