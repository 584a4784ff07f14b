#include "platform/locale_info.hpp"

namespace quintara {

int localeInfo(const Separators& user, std::int32_t LCType, char* buffer, int length) {
  constexpr std::int32_t kDecimal = 14;
  constexpr std::int32_t kThousand = 15;
  if (LCType != kDecimal && LCType != kThousand) {
    return 0;
  }
  const std::string& separator = LCType == kDecimal ? user.decimal : user.thousands;
  if (separator.size() != 1 || length < 2) {
    return 0;
  }
  buffer[0] = separator.front();
  buffer[1] = '\0';
  return 2;
}

}  // namespace quintara
