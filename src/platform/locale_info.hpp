#pragma once

#include <cstdint>
#include <string>

namespace quintara {

/// How the user writes numbers; UTF-8.
struct Separators {
  std::string decimal;
  std::string thousands;
};

/// Answers GetLocaleInfoA (see LocaleQuery) for a user of these separators. One of more than a
/// byte, such as the Arabic one, is as good as none: numbers are read byte by byte.
int localeInfo(const Separators& user, std::int32_t LCType, char* buffer, int length);

}  // namespace quintara
