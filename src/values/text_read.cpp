#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string>
#include <system_error>

#include "values/errors.hpp"
#include "values/text.hpp"

namespace quintara {

std::string sDecimalSep;
std::string sThousandSep;

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool startsNumber(char c) { return (c >= '0' && c <= '9') || c == '.'; }

/// Whether a number beyond the range of a double is too large, not too small. It holds digits.
bool isLarge(std::string_view number) {
  const auto letter = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, letter);
  const auto point = static_cast<long>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<long>(digits.find_first_of("123456789"));
  long exponent = 0;
  if (letter < number.size()) {
    std::string_view text = number.substr(letter + 1);
    if (text.front() == '+') {
      text.remove_prefix(1);
    }
    const auto read = std::from_chars(text.data(), text.data() + text.size(), exponent);
    if (read.ec == std::errc::result_out_of_range) {
      return text.front() != '-';
    }
  }
  return exponent > first - point;
}

struct Number {
  double value = 0;        ///< infinite beyond a double's range
  std::size_t length = 0;  ///< characters; 0 if there is no number
};

/// The number at the start of `text`: an optional sign, digits with at most one full stop, an
/// exponent.
Number readNumber(std::string_view text) {
  // from_chars takes no plus sign, but "inf" and "nan".
  const auto digits = text.find_first_not_of("+-");
  if (digits > 1 || !startsNumber(text[digits])) {
    return {};
  }
  const char* const start = text.data() + (text.front() == '+' ? 1 : 0);
  Number number;
  const auto result = std::from_chars(start, text.data() + text.size(), number.value);
  if (result.ec == std::errc::result_out_of_range && isLarge({start, result.ptr})) {
    number.value = HUGE_VAL;
  }
  if (result.ec != std::errc::invalid_argument) {
    number.length = static_cast<std::size_t>(result.ptr - text.data());
  }
  return number;
}

double withinRange(double value) {
  if (!std::isfinite(value)) {
    throw RuntimeError(ErrorKind::Overflow);
  }
  return value;
}

/// The value of a hexadecimal or octal integer's digits; reading stops at the first other one.
double readWhole(std::string_view text, std::size_t base) {
  constexpr std::string_view kDigits = "00112233445566778899aAbBcCdDeEfF";
  double value = 0;
  for (const char c : text) {
    const std::size_t digit = kDigits.find(c) / 2;
    if (digit >= base) {
      break;
    }
    value = value * static_cast<double>(base) + static_cast<double>(digit);
  }
  return withinRange(value);
}

}  // namespace

double readLocaleNumber(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && isBlank(text.back())) {
    text.remove_suffix(1);
  }
  const std::string_view point = decimalSep();
  std::string withPoint;
  if (point != ".") {
    if (text.find('.') != std::string_view::npos) {
      throw RuntimeError(ErrorKind::TypeMismatch);
    }
    withPoint = text;
    if (const auto at = withPoint.find(point); at != std::string::npos) {
      withPoint.replace(at, point.size(), ".");
    }
    text = withPoint;
  }
  const Number number = readNumber(text);
  if (number.length == 0 || number.length != text.size()) {
    throw RuntimeError(ErrorKind::TypeMismatch);
  }
  return withinRange(number.value);
}

double readLeadingNumber(std::string_view text) {
  std::string packed;
  std::copy_if(text.begin(), text.end(), std::back_inserter(packed),
               [](char c) { return c != ' ' && c != '\t' && c != '\n'; });
  if (packed.starts_with("&H") || packed.starts_with("&h")) {
    return readWhole(packed.substr(2), 16);
  }
  if (packed.starts_with("&O") || packed.starts_with("&o")) {
    return readWhole(packed.substr(2), 8);
  }
  // D marks an exponent as E does. An exponent without digits is not part of the number.
  std::replace_if(
      packed.begin(), packed.end(), [](char c) { return c == 'd' || c == 'D'; }, 'e');
  return withinRange(readNumber(packed).value);
}

}  // namespace quintara
