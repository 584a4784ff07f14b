#include "platform/headless/separators.hpp"

#include <unicode/unum.h>
#include <unicode/ustring.h>

#include <array>
#include <cstdlib>

namespace quintara {
namespace {

std::string userLocale() {
  for (const char* name : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
    const char* const value = std::getenv(name);
    if (value != nullptr && *value != '\0') {
      return value;
    }
  }
  return "C";
}

std::string symbol(const UNumberFormat* format, UNumberFormatSymbol which) {
  constexpr std::size_t kLongest = 16;
  std::array<UChar, kLongest> text{};
  std::array<char, 3 * kLongest> utf8{};
  UErrorCode error = U_ZERO_ERROR;
  unum_getSymbol(format, which, text.data(), kLongest, &error);
  u_strToUTF8(utf8.data(), static_cast<std::int32_t>(utf8.size()), nullptr, text.data(), -1,
              &error);
  return U_SUCCESS(error) ? utf8.data() : "";
}

}  // namespace

Separators userSeparators() {
  const std::string locale = userLocale();
  // C, C.UTF-8 and POSIX are no language.
  if (locale.starts_with("C.") || locale == "C" || locale == "POSIX") {
    return {".", ","};
  }
  UErrorCode error = U_ZERO_ERROR;
  UNumberFormat* const format =
      unum_open(UNUM_DECIMAL, nullptr, 0, locale.c_str(), nullptr, &error);
  if (U_FAILURE(error)) {
    return {};
  }
  Separators found{symbol(format, UNUM_DECIMAL_SEPARATOR_SYMBOL),
                   symbol(format, UNUM_GROUPING_SEPARATOR_SYMBOL)};
  unum_close(format);
  return found;
}

}  // namespace quintara
