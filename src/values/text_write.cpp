#include <array>
#include <charconv>
#include <cmath>

#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara {

namespace {

// The longest plain form of a single is about 50 characters, of a double about 320.
using Buffer = std::array<char, 400>;
constexpr int kDigits = 7;

std::string fixedText(double value, int decimals) {
  Buffer buffer;
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::fixed, decimals);
  return {buffer.data(), end};
}

/// The decimal exponent of a positive value after rounding to 7 significant digits.
int exponentOf(double value) {
  Buffer buffer;
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::scientific, kDigits - 1);
  const char* exponent = buffer.data() + kDigits + 2;  // behind "d.dddddde"
  int result = 0;
  std::from_chars(*exponent == '+' ? exponent + 1 : exponent, end, result);
  return result;
}

void stripTrailingZeros(std::string& text) {
  if (text.find('.') == std::string::npos) {
    return;
  }
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') {
    text.pop_back();
  }
}

/// Plain digits with a full stop of a value above 0.
std::string plainText(float value) {
  const double wide = value;
  // A single of this size is a whole number, and its own digits read back as it is.
  if (wide >= 1e7) {
    return fixedText(wide, 0);
  }
  const int decimals = kDigits - 1 - exponentOf(wide);
  std::string text = fixedText(wide, decimals);
  if (wide < 1e-4 && toSingle(readLeadingNumber(text)) > value) {
    // Rounding to nearest went up; cutting off what is behind the seventh digit goes down.
    constexpr int kBehind = 10;
    text = fixedText(wide, decimals + kBehind);
    text.resize(text.size() - kBehind);
  }
  stripTrailingZeros(text);
  return text;
}

void useDecimalSep(std::string& text) {
  if (const auto point = text.find('.'); point != std::string::npos) {
    text.replace(point, 1, decimalSep());
  }
}

}  // namespace

std::string defaultText(float value) {
  if (value == 0) {
    return "0";
  }
  std::string text = plainText(std::fabs(value));
  if (value < 0) {
    text.insert(0, 1, '-');
  }
  useDecimalSep(text);
  return text;
}

std::string printForm(double whole) {
  std::string text(1, whole < 0 ? '-' : ' ');
  text += fixedText(std::fabs(whole), 0);
  text += ' ';
  return text;
}

std::string twoDecimals(float value) {
  // The product is exact: a single times 100 has less than 53 significant bits.
  const double hundredths = std::round(std::fabs(double{value}) * 100);
  std::string text = fixedText(hundredths / 100, 2);
  if (value < 0 && hundredths > 0) {
    text.insert(0, 1, '-');
  }
  useDecimalSep(text);
  return text;
}

}  // namespace quintara
