#include <algorithm>

#include "platform/platform.hpp"

namespace quintara {

std::string LocaleQuery::UCase(const std::string& text) const {
  std::string upper = text;
  std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return upper;
}

}  // namespace quintara
