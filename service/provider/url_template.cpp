#include "service/provider/url_template.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "service/text/text.hpp"
#include "transfer/url_parts.hpp"

namespace quintara::quotes {

std::string filled(std::string_view text, const Filling& filling, bool encode) {
  std::string result;
  while (!text.empty()) {
    const auto plain = std::min(text.find_first_of("{}"), text.size());
    result += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) {
      break;
    }
    const auto end = text.find('}');
    if (text.front() == '}' || end == text.npos) {
      throw std::invalid_argument("a brace without its partner");
    }
    const auto value = filling.find(text.substr(1, end - 1));
    if (value == filling.end()) {
      throw std::invalid_argument("an unknown placeholder in braces");
    }
    result += encode ? percentEncoded(value->second) : value->second;
    text.remove_prefix(end + 1);
  }
  return result;
}

UrlTemplate::UrlTemplate(std::string text, const Filling& example) : text_(std::move(text)) {
  const bool visible = std::all_of(text_.begin(), text_.end(),
                                   [](char c) { return c > ' ' && c <= '~' && c != '#'; });
  const auto parts = visible ? urlParts(filledWith(example)) : std::nullopt;
  if (!parts || text_.find("://") == text_.npos) {
    throw std::invalid_argument("not an http or https address without a user's name in it");
  }
  // libcurl decides where the host's name ends: it forgives a third slash, for one.
  Filling other = example;
  for (auto& [name, value] : other) {
    value += '0';
  }
  if (urlParts(filledWith(other)) != parts) {
    throw std::invalid_argument("a placeholder in the name of the host");
  }
  if (!names("symbol") && !names("symbol_lower")) {
    throw std::invalid_argument("the placeholder {symbol} is missing");
  }
  host_ = parts->host;
  secure_ = parts->scheme == "https";
}

bool UrlTemplate::names(std::string_view placeholder) const {
  return text_.find("{" + std::string(placeholder) + "}") != std::string::npos;
}

}  // namespace quintara::quotes
