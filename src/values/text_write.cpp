#include <array>
#include <charconv>
#include <cmath>

#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara {

namespace {

/// The precision is a number of decimals, or of digits in the general format.
std::string written(double value, int precision,
                    std::chars_format format = std::chars_format::fixed) {
  // The longest plain form of a single is about 60 characters, of a double about 320.
  std::array<char, 400> buffer;
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, precision);
  return {buffer.data(), end};
}

/// Plain digits with a full stop of 0 or a value above.
std::string plainText(float value) {
  constexpr int kDigits = 7;
  const double wide = value;
  // A single of this size is a whole number, and its own digits read back as it is.
  if (wide >= 1e7) {
    return written(wide, 0);
  }
  if (wide >= 1e-4 || wide == 0) {
    return written(wide, kDigits, std::chars_format::general);
  }
  const std::string all = written(wide, 60);
  const auto end = all.find_first_of("123456789") + kDigits;
  std::string text = written(wide, static_cast<int>(end) - 2);
  if (toSingle(readLeadingNumber(text)) > value) {
    // Rounding to nearest went up; cutting off what is behind the seventh digit goes down.
    text = all.substr(0, end);
  }
  text.erase(text.find_last_not_of('0') + 1);
  return text;
}

void useDecimalSep(std::string& text) {
  if (const auto point = text.find('.'); point != std::string::npos) {
    text.replace(point, 1, decimalSep());
  }
}

}  // namespace

std::string defaultText(float value) {
  std::string text = plainText(std::fabs(value));
  if (value < 0) {
    text.insert(0, 1, '-');
  }
  useDecimalSep(text);
  return text;
}

std::string printForm(double whole) {
  return (whole < 0 ? '-' : ' ') + written(std::fabs(whole), 0) + ' ';
}

std::string twoDecimals(float value) {
  // The product is exact: a single times 100 has less than 53 significant bits.
  const double hundredths = std::round(double{value} * 100) + 0.0;  // which makes -0 of it 0
  std::string text = written(hundredths / 100, 2);
  useDecimalSep(text);
  return text;
}

}  // namespace quintara
