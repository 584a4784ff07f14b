#include "values/numbers.hpp"

namespace quintara {

// The program never leaves the default rounding mode, to nearest with halves to even.
double roundHalfEven(double value) { return std::nearbyint(value); }

std::int16_t toInt16(double value) {
  const double whole = roundHalfEven(value);
  constexpr auto kLow = double{std::numeric_limits<std::int16_t>::min()};
  constexpr auto kHigh = double{std::numeric_limits<std::int16_t>::max()};
  if (!(whole >= kLow && whole <= kHigh)) {
    throw RuntimeError(ErrorKind::Overflow);
  }
  return static_cast<std::int16_t>(whole);
}

double roundTo3(double value) { return roundHalfEven(value * 1000) / 1000; }

}  // namespace quintara
