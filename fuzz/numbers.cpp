// Reading and writing of numbers. Input: a character that picks the decimal separator, then the
// text. The C library's reader is the other opinion.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <optional>
#include <string>

#include "target.hpp"
#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara::fuzz {

namespace {

constexpr std::string_view kDigits = "0123456789";

/// A number read, or why there is none.
struct Reading {
  std::optional<ErrorKind> error;
  double value = 0;
};

Reading reading(const std::function<double()>& read) {
  try {
    return {{}, read()};
  } catch (const RuntimeError& error) {
    return {error.kind(), 0};
  }
}

void checkSame(const Reading& got, const Reading& expected, const char* rule) {
  check(got.error == expected.error && got.value == expected.value, rule);
}

/// The leading number of the text, with a full stop, and the number of characters it has.
Reading leading(const std::string& text, std::size_t& length) {
  // Nothing beyond these: the C library also reads hexadecimal, infinities and NaN.
  const std::string number = text.substr(0, text.find_first_not_of("0123456789+-.eE"));
  char* end = nullptr;
  const double value = std::strtod(number.c_str(), &end);
  length = static_cast<std::size_t>(end - number.c_str());
  if (std::isinf(value)) return {ErrorKind::Overflow, 0};
  return {{}, value};
}

Reading expectedLocaleNumber(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const auto first = std::min(text.find_first_not_of(kBlanks), text.size());
  std::string number(text.substr(first, text.find_last_not_of(kBlanks) + 1 - first));
  const std::string point = sDecimalSep.empty() ? "." : sDecimalSep;
  const auto at = number.find(point);
  const bool stray = point != "." && number.find('.') != std::string::npos;
  if (at != std::string::npos) number.replace(at, point.size(), ".");
  std::size_t length = 0;
  const Reading read = leading(number, length);
  if (stray || length == 0 || length < number.size()) return {ErrorKind::TypeMismatch, 0};
  return read;
}

void checkLeadingNumber(std::string_view text) {
  const Reading got = reading([&] { return readLeadingNumber(text); });
  check(std::isfinite(got.value), "a number that was read is finite");
  std::string packed;
  std::copy_if(text.begin(), text.end(), std::back_inserter(packed),
               [](char c) { return std::string_view(" \t\n").find(c) == std::string_view::npos; });
  if (!packed.empty() && packed[0] == '&') return;  // whole numbers of other bases
  std::replace_if(
      packed.begin(), packed.end(), [](char c) { return c == 'd' || c == 'D'; }, 'E');
  std::size_t length = 0;
  checkSame(got, leading(packed, length), "the leading number is what the C library reads");
}

/// A text of digits with at most one separator, and the rules of its form.
void checkForm(float value, std::string text) {
  check(text.size() < 64, "the text of a single is short");
  check(text.starts_with('-') == (value < 0), "only a negative number has a sign");
  if (value < 0) text.erase(0, 1);
  const std::string point = sDecimalSep.empty() ? "." : sDecimalSep;
  const auto at = text.find(point);
  if (at != std::string::npos) {
    check(text.back() != '0' && at + point.size() < text.size(), "no zeros end the decimals");
    text.erase(at, point.size());
  }
  check(!text.empty() && text.find_first_not_of(kDigits) == std::string::npos,
        "a number is written in plain digits");
  text.erase(0, text.find_first_not_of('0'));
  check(std::fabs(value) >= 1e7F || text.size() <= 7, "at most 7 digits are significant");
}

void checkWriters(float value) {
  const std::string text = defaultText(value);
  checkForm(value, text);
  const double wide = value;
  const double back = toSingle(readLocaleNumber(text));
  // Seven digits cut off, not rounded, are the least exact form; below, singles stand apart.
  const double apart = std::fabs(wide) * 1.06e-6 + 1.5e-45;
  check(std::fabs(back - wide) <= apart, "a written number reads back within 7 digits");
  if (value > 0 && (value < 1e-4F || value >= 1e7F)) {
    check(toSingle(readLeadingNumber(text)) <= value, "an extreme price never reads back larger");
  }
  check(std::fabs(readLocaleNumber(twoDecimals(value)) - wide) <= 0.005 + std::fabs(wide) * 1e-15,
        "two decimals are the nearest");
  const double whole = roundHalfEven(wide);
  check(readLeadingNumber(printForm(whole)) == whole, "a whole number reads back as it is");
}

}  // namespace

void tryInput(std::string_view input) {
  constexpr std::array<const char*, 5> kSeparators{"", ".", ",", "'", "\xD9\xAB"};
  if (input.empty()) return;
  sDecimalSep = kSeparators.at(static_cast<unsigned char>(input[0]) % kSeparators.size());
  input.remove_prefix(1);

  const Reading number = reading([&] { return readLocaleNumber(input); });
  checkSame(number, expectedLocaleNumber(input), "a number is what the C library takes whole");
  if (std::fabs(number.value) <= double{std::numeric_limits<float>::max()}) {
    checkWriters(toSingle(number.value));
  }
  checkLeadingNumber(input);

  float bits = 0;
  std::memcpy(&bits, input.data(), std::min(input.size(), sizeof bits));
  if (std::isfinite(bits)) checkWriters(bits);
}

}  // namespace quintara::fuzz
