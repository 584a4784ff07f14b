#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "service/prices/calendar.hpp"

namespace quintara::quotes {

struct Decimal;

/// Money as a decimal number of ten significant digits: exact from the source to the reply, and in
/// order. Either 0, or from 10^-18 to below 10^15.
class Price {
 public:
  constexpr Price() = default;
  /// `digits` in units of 10^-places, both at least 0 and in the range above.
  Price(std::int64_t digits, int places);

  bool operator==(const Price&) const = default;
  std::strong_ordering operator<=>(const Price& other) const { return packed_ <=> other.packed_; }

  /// Plain digits with a point, no zeros at the end beyond the second decimal: 12.50, 1.09266.
  std::string text() const;

 private:
  friend struct Decimal;
  friend std::string changeText(Price last, Price before);

  static constexpr int kDigitBits = 40;
  static constexpr int kBias = 64;

  std::int64_t digits() const { return packed_ & ((std::int64_t{1} << kDigitBits) - 1); }
  int power() const { return static_cast<int>(packed_ >> kDigitBits) - kBias; }
  int places() const;
  std::string digitsWith(int places) const;

  // The power of ten above the digits, of which there are always ten: in the order of prices.
  std::int64_t packed_ = 0;
};

/// A value, and whether it is a little less than what stood there because not all could be kept.
template <class Value>
struct Kept {
  Value value;
  bool cut = false;
};

/// A number as it was written: digits * 10^power.
struct Decimal {
  std::uint64_t digits = 0;  ///< the first nineteen, from the first that is not 0
  int power = 0;
  bool cut = false;  ///< more digits followed, not all of them 0

  /// More than ten digits are rounded half up. No value out of the range of prices.
  std::optional<Kept<Price>> price() const;
  /// Without decimals; the largest number of 64 bits in place of a larger one.
  Kept<std::int64_t> whole() const;
};

/// Digits with perhaps a decimal point (with `comma` also a decimal comma) and perhaps an exponent:
/// 12.5, 1e-05. No value for signs, grouped digits and anything else.
std::optional<Decimal> parseDecimal(std::string_view text, bool comma);

/// The way from `before` to `last` with its sign ("+0.10"), exactly.
std::string changeText(Price last, Price before);

/// The largest number of 64 bits in place of a larger sum. Both at least 0.
std::int64_t sumOfVolumes(std::int64_t one, std::int64_t other);

/// One trading day. low <= open, close <= high; prices above 0; volume at least 0.
struct DailyBar {
  Day date;
  Price open;
  Price high;
  Price low;
  Price close;
  std::int64_t volume = 0;

  bool operator==(const DailyBar&) const = default;
};

/// Oldest first, one bar for a date.
using DailyBars = std::vector<DailyBar>;

}  // namespace quintara::quotes
