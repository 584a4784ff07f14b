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

/// Reads the number at the start of `text`, which goes on behind it from `end`: an optional sign,
/// digits with at most one full stop, an exponent. No number leaves `end` at the start; one beyond
/// a double's range is infinite.
double readNumber(std::string_view text, const char*& end) {
  end = text.data();
  std::string_view number = text;
  if (!number.empty() && number.front() == '+') {
    number.remove_prefix(1);
  }
  const std::size_t unsignedAt = !number.empty() && number.front() == '-' ? 1 : 0;
  // from_chars would take "inf" and "nan", and a minus sign behind the plus.
  if (number.size() <= unsignedAt || !startsNumber(number[unsignedAt])) {
    return 0;
  }
  if (unsignedAt == 1 && number.size() < text.size()) {
    return 0;
  }
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::invalid_argument) {
    return 0;
  }
  end = result.ptr;
  if (result.ec == std::errc::result_out_of_range) {
    return isLarge({number.data(), result.ptr}) ? HUGE_VAL : 0;
  }
  return value;
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
  if (text.empty()) {
    throw RuntimeError(ErrorKind::TypeMismatch);
  }

  const std::string_view point = decimalSep();
  std::string withPoint;
  if (point != ".") {
    if (text.find('.') != std::string_view::npos) {
      throw RuntimeError(ErrorKind::TypeMismatch);
    }
    withPoint = text;
    if (const auto at = withPoint.find(point); at != std::string::npos) {
      withPoint.erase(at, point.size()).insert(at, 1, '.');
    }
    text = withPoint;
  }
  const char* end = nullptr;
  const double value = readNumber(text, end);
  if (end != text.data() + text.size()) {
    throw RuntimeError(ErrorKind::TypeMismatch);
  }
  return withinRange(value);
}

double readLeadingNumber(std::string_view text) {
  std::string packed;
  std::copy_if(text.begin(), text.end(), std::back_inserter(packed),
               [](char c) { return c != ' ' && c != '\t' && c != '\n'; });
  if (packed.size() > 2 && packed[0] == '&') {
    if (packed[1] == 'H' || packed[1] == 'h') {
      return readWhole(packed.substr(2), 16);
    }
    if (packed[1] == 'O' || packed[1] == 'o') {
      return readWhole(packed.substr(2), 8);
    }
  }
  // D marks an exponent as E does. An exponent without digits is not part of the number.
  std::replace_if(
      packed.begin(), packed.end(), [](char c) { return c == 'd' || c == 'D'; }, 'e');
  const char* end = nullptr;
  return withinRange(readNumber(packed, end));
}

}  // namespace quintara
