#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "service/prices/calendar.hpp"

namespace quintara::quotes {

/// Money in whole ten-thousandths: 12.5 is 125'000. Decimal prices survive reading and writing
/// without a binary fraction in between.
using Price = std::int64_t;
inline constexpr Price kPriceUnit = 10'000;
inline constexpr Price kHighestPrice = 1'000'000'000 * kPriceUnit;
inline constexpr std::int64_t kHighestVolume = 1'000'000'000'000'000;

/// One trading day. low <= open, close <= high; prices above 0; volume at least 0.
struct DailyBar {
  Day date;
  Price open = 0;
  Price high = 0;
  Price low = 0;
  Price close = 0;
  std::int64_t volume = 0;

  bool operator==(const DailyBar&) const = default;
};

/// Oldest first, one bar for a date.
using DailyBars = std::vector<DailyBar>;

/// Decimal text ("12.5", with `comma` also "12,5") in units of 10^-places. Digits after the last
/// place are cut off. No value for signs, exponents, grouped digits, anything else than a number,
/// and results above `highest`.
std::optional<std::int64_t> parseDecimal(std::string_view text, int places, bool comma,
                                         std::int64_t highest);

/// A price with any number of decimals. Below 1 it rounds half up to ten-thousandths, as it is
/// shown; from 1 on further decimals are cut off, because priceText() rounds, and rounding twice
/// would show 12.34499 as 12.35.
std::optional<Price> parsePrice(std::string_view text, bool comma);

/// Two decimals, rounded half up; four below 1.
std::string priceText(Price price);

/// The way from `before` to `last` with its sign ("+0.10"), in the decimals that `last` is shown
/// in.
std::string changeText(Price last, Price before);

}  // namespace quintara::quotes
