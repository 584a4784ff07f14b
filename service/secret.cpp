#include "service/secret.hpp"

#include <utility>

#include "service/text.hpp"

namespace quintara::quotes {

Secret::Secret(std::string value) : value_(std::move(value)) {
  if (!value_.empty()) {
    spellings_ = {percentEncoded(value_), escaped(value_), value_};
  }
}

std::string Secret::hiddenIn(std::string_view text) const {
  std::string result;
  while (!text.empty()) {
    std::size_t length = 0;
    for (const std::string& spelling : spellings_) {
      if (length == 0 && equalIgnoringCase(text.substr(0, spelling.size()), spelling)) {
        length = spelling.size();
      }
    }
    result += length > 0 ? "***" : std::string(1, text.front());
    text.remove_prefix(length > 0 ? length : 1);
  }
  return result;
}

}  // namespace quintara::quotes
