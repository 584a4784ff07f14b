#include "service/text/text.hpp"

#include <algorithm>
#include <charconv>

namespace quintara::quotes {
namespace {

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string upperCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), upper);
  return result;
}

std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), lower);
  return result;
}

bool equalIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return upper(a) == upper(b); });
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const auto first = text.find_first_not_of(kBlanks);
  if (first == text.npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<int> parseCount(std::string_view text) {
  if (text.empty() || text.size() > 9 || !std::all_of(text.begin(), text.end(), isDigit)) {
    return std::nullopt;
  }
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

std::string escaped(std::string_view text) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7f && c != '\\') {
      result += c;
    } else {
      result += "\\x";
      result += kHex[byte >> 4U];
      result += kHex[byte & 0xfU];
    }
  }
  return result;
}

std::string percentEncoded(std::string_view text) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (isDigit(c) || (upper(c) >= 'A' && upper(c) <= 'Z') ||
        std::string_view("-._~").find(c) < 4) {
      result += c;
    } else {
      result += {'%', kHex[byte >> 4U], kHex[byte & 0xfU]};
    }
  }
  return result;
}

}  // namespace quintara::quotes
