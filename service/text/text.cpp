#include "service/text/text.hpp"

#include <algorithm>
#include <charconv>

namespace quintara::quotes {
namespace {

constexpr char kSmall = 'a' - 'A';

char upper(char c) { return isSmall(c) ? static_cast<char>(c - kSmall) : c; }

char lower(char c) { return isCapital(c) ? static_cast<char>(c + kSmall) : c; }

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

std::size_t blankAt(std::string_view text, std::size_t at) {
  const auto isThere = [&](std::string_view bytes) {
    return text.size() - at > bytes.size() && text[at + 1] == bytes[0] &&
           (bytes.size() == 1 || text[at + 2] == bytes[1]);
  };
  switch (static_cast<unsigned char>(text[at])) {
    case ' ':
    case '\t':
    case '\r':
    case '\n':
      return 1;
    case 0xC2:  // no-break
      return isThere("\xA0") ? 2 : 0;
    case 0xE2:  // figure, thin, hair, the two marks of direction, narrow
      return isThere("\x80\x87") || isThere("\x80\x89") || isThere("\x80\x8A") ||
                     isThere("\x80\x8E") || isThere("\x80\x8F") || isThere("\x80\xAF")
                 ? 3
                 : 0;
    case 0xE3:  // ideographic
      return isThere("\x80\x80") ? 3 : 0;
    case 0xEF:  // the byte order mark
      return isThere("\xBB\xBF") ? 3 : 0;
    default:
      return 0;
  }
}

std::string_view withoutBlanks(std::string_view text) {
  while (!text.empty()) {
    const auto size = blankAt(text, 0);
    if (size == 0) {
      break;
    }
    text.remove_prefix(size);
  }
  while (!text.empty()) {
    std::size_t size = 1;
    while (size <= 3 && (size > text.size() || blankAt(text, text.size() - size) != size)) {
      ++size;
    }
    if (size > 3) {
      break;
    }
    text.remove_suffix(size);
  }
  return text;
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

std::string inQuotes(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  const std::string shown = escaped(text.substr(0, kLongest + 1));
  return "\"" + (shown.size() > kLongest ? "..." : shown) + "\"";
}

std::string percentEncoded(std::string_view text) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (isDigit(c) || isSmall(c) || isCapital(c) ||
        std::string_view("-._~").find(c) != std::string_view::npos) {
      result += c;
    } else {
      result += {'%', kHex[byte >> 4U], kHex[byte & 0xfU]};
    }
  }
  return result;
}

}  // namespace quintara::quotes
