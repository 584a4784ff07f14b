#include "service/tables/plain_name.hpp"

#include <utf8proc.h>

#include <cstdlib>
#include <memory>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

struct Free {
  void operator()(utf8proc_uint8_t* text) const { std::free(text); }
};

// OpenPrice are two words.
std::string parted(std::string_view name) {
  std::string result;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (i > 0 && (isSmall(name[i - 1]) || isDigit(name[i - 1])) && isCapital(name[i])) {
      result += ' ';
    }
    result += name[i];
  }
  return result;
}

bool isOfWord(utf8proc_int32_t character) {
  const auto category = utf8proc_category(character);
  return category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_NO;
}

// Letters that Unicode does not take for another one with an accent.
std::string_view withoutStroke(utf8proc_int32_t character) {
  switch (character) {
    case 0x131:
      return "i";
    case 0x142:
      return "l";
    case 0xF8:
      return "o";
    case 0x111:
      return "d";
    case 0xE6:
      return "ae";
    default:
      return {};
  }
}

}  // namespace

std::string plainName(std::string_view name) {
  const std::string words = parted(name);
  utf8proc_uint8_t* mapped = nullptr;
  constexpr auto kOptions =
      static_cast<utf8proc_option_t>(UTF8PROC_COMPAT | UTF8PROC_DECOMPOSE | UTF8PROC_CASEFOLD |
                                     UTF8PROC_STRIPMARK | UTF8PROC_IGNORE);
  const auto length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(words.data()),
                                   static_cast<utf8proc_ssize_t>(words.size()), &mapped, kOptions);
  const std::unique_ptr<utf8proc_uint8_t, Free> owner(mapped);
  std::string result;
  bool gap = false;
  for (utf8proc_ssize_t at = 0; at < length;) {
    utf8proc_int32_t character = 0;
    const auto size = utf8proc_iterate(mapped + at, length - at, &character);
    if (size <= 0) {
      break;
    }
    if (isOfWord(character)) {
      result += gap && !result.empty() ? " " : "";
      const auto plain = withoutStroke(character);
      const std::string_view itself(reinterpret_cast<const char*>(mapped + at),
                                    static_cast<std::size_t>(size));
      result += plain.empty() ? itself : plain;
    }
    gap = !isOfWord(character);
    at += size;
  }
  return result;
}

}  // namespace quintara::quotes
