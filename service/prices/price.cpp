#include "service/prices/price.hpp"

#include <algorithm>
#include <cstdlib>

namespace quintara::quotes {
namespace {

std::string fixedText(std::int64_t value, int places) {
  std::string digits = std::to_string(value);
  const auto needed = static_cast<std::size_t>(places) + 1;
  if (digits.size() < needed) {
    digits.insert(0, needed - digits.size(), '0');
  }
  return digits.insert(digits.size() - static_cast<std::size_t>(places), ".");
}

// Below 1 a cent is too coarse to tell bars apart.
std::string textLike(Price scale, Price value) {
  return scale < kPriceUnit ? fixedText(value, 4) : fixedText((value + 50) / 100, 2);
}

}  // namespace

std::optional<std::int64_t> parseDecimal(std::string_view text, int places, bool comma,
                                         std::int64_t highest) {
  std::int64_t value = 0;
  int decimals = -1;  // -1 before the decimal mark
  bool digits = false;
  for (const char c : text) {
    if (decimals < 0 && (c == '.' || (comma && c == ','))) {
      decimals = 0;
      continue;
    }
    if (c < '0' || c > '9' || value > highest) {
      return std::nullopt;
    }
    digits = true;
    if (decimals < places) {
      value = value * 10 + (c - '0');
      decimals += decimals < 0 ? 0 : 1;
    }
  }
  for (int i = std::max(decimals, 0); i < places && value <= highest; ++i) {
    value *= 10;
  }
  return digits && value <= highest ? std::optional(value) : std::nullopt;
}

std::optional<Price> parsePrice(std::string_view text, bool comma) {
  constexpr std::int64_t kFiner = 10;
  const auto fine = parseDecimal(text, 5, comma, kHighestPrice * kFiner);
  if (!fine) {
    return std::nullopt;
  }
  return *fine < kPriceUnit * kFiner ? (*fine + kFiner / 2) / kFiner : *fine / kFiner;
}

std::string priceText(Price price) { return textLike(price, price); }

std::string changeText(Price last, Price before) {
  const Price change = last - before;
  const char* sign = change > 0 ? "+" : change < 0 ? "-" : "";
  return sign + textLike(last, std::abs(change));
}

}  // namespace quintara::quotes
