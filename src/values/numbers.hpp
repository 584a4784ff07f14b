#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "values/errors.hpp"

namespace quintara {

/// Narrows to single precision, rounding to nearest.
/// Throws Overflow beyond the single range and for anything that is not a number.
inline float toSingle(double value) {
  const auto single = static_cast<float>(value);
  if (!std::isfinite(single)) {
    throw RuntimeError(ErrorKind::Overflow);
  }
  return single;
}

/// Rounds to a whole number, an exact half to the even neighbour.
double roundHalfEven(double value);

/// Rounds half to even to a 16-bit integer. Throws Overflow when it does not fit.
std::int16_t toInt16(double value);

/// Rounds to three decimals, an exact half to the even last digit.
double roundTo3(double value);

/// A single-precision value whose every operation is done in single precision and checked:
/// a result beyond the range throws Overflow, a division by zero DivisionByZero.
class Single {
 public:
  constexpr Single(float value) : value_(value) {}
  // No conversion back: it would let the unchecked operators of float in.
  [[nodiscard]] constexpr float value() const { return value_; }

  friend Single operator+(Single a, Single b) { return checked(a.value_ + b.value_); }
  friend Single operator-(Single a, Single b) { return checked(a.value_ - b.value_); }
  friend Single operator*(Single a, Single b) { return checked(a.value_ * b.value_); }
  friend Single operator/(Single a, Single b) {
    if (b.value_ == 0) {
      throw RuntimeError(ErrorKind::DivisionByZero);
    }
    return checked(a.value_ / b.value_);
  }
  friend constexpr bool operator<(Single a, Single b) { return a.value_ < b.value_; }
  friend constexpr bool operator>(Single a, Single b) { return a.value_ > b.value_; }
  friend constexpr bool operator==(Single a, Single b) { return a.value_ == b.value_; }

 private:
  static Single checked(float value) {
    if (!std::isfinite(value)) {
      throw RuntimeError(ErrorKind::Overflow);
    }
    return value;
  }

  float value_;
};

}  // namespace quintara
