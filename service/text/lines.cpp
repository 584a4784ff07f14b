#include "service/text/lines.hpp"

#include <algorithm>

#include "service/text/text.hpp"

namespace quintara::quotes {

std::string_view withoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return text.substr(text.substr(0, kMark.size()) == kMark ? kMark.size() : 0);
}

std::string_view takeLine(std::string_view& text) {
  const auto end = std::min(text.find('\n'), text.size());
  const auto line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return trimmed(line);
}

}  // namespace quintara::quotes
