#include "service/prices/price.hpp"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <limits>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::uint64_t kTenDigits = 1'000'000'000;  // the smallest number of that many
constexpr std::uint64_t kMostDigits = 1'000'000'000'000'000'000;
constexpr int kLowestPower = -18 - 9;  // of a price's tenth digit
constexpr int kHighestPower = 14 - 9;
constexpr int kHighestExponent = 9'999;
constexpr std::int64_t kHighestWhole = std::numeric_limits<std::int64_t>::max();

// The digits of a whole number, the last ones as decimals.
std::string withPoint(std::string digits, int places) {
  const auto decimals = static_cast<std::size_t>(places);
  if (digits.size() <= decimals) {
    digits.insert(0, decimals + 1 - digits.size(), '0');
  }
  const std::size_t whole = digits.size() - decimals;
  const std::size_t last = digits.find_last_not_of('0');
  const std::size_t length = last == digits.npos ? 0 : last + 1;
  digits.resize(std::max(length, whole + 2), '0');
  return digits.insert(whole, ".");
}

// `larger` - `smaller`, digit by digit: neither has to fit into a number of the machine.
std::string difference(std::string larger, std::string smaller) {
  smaller.insert(0, larger.size() - smaller.size(), '0');
  int borrowed = 0;
  for (std::size_t i = larger.size(); i-- > 0;) {
    const int digit = larger[i] - smaller[i] - borrowed;
    borrowed = digit < 0 ? 1 : 0;
    larger[i] = static_cast<char>('0' + digit + borrowed * 10);
  }
  return larger.erase(0, larger.find_first_not_of('0'));
}

// What follows the digits: nothing, or an e and a number.
std::optional<int> parseExponent(std::string_view text) {
  if (text.empty()) {
    return 0;
  }
  const bool plus = text.size() > 2 && text[1] == '+' && isDigit(text[2]);
  const char* const last = text.data() + text.size();
  int exponent = 0;
  const auto [end, error] = std::from_chars(text.data() + (plus ? 2 : 1), last, exponent);
  const bool number = error == std::errc() && end == last;
  return (text[0] == 'e' || text[0] == 'E') && number && std::abs(exponent) <= kHighestExponent
             ? std::optional(exponent)
             : std::nullopt;
}

}  // namespace

Price::Price(std::int64_t digits, int places) {
  const Decimal decimal{static_cast<std::uint64_t>(digits), -places};
  *this = decimal.price().value().value;
}

int Price::places() const { return packed_ == 0 ? 0 : std::max(-power(), 0); }

// The whole number of units of 10^-places, which must not be coarser than this price.
std::string Price::digitsWith(int places) const {
  const int zeros = packed_ == 0 ? 0 : places + power();
  return std::to_string(digits()).append(static_cast<std::size_t>(zeros), '0');
}

std::string Price::text() const { return withPoint(digitsWith(places()), places()); }

std::optional<Kept<Price>> Decimal::price() const {
  Kept<Price> kept{{}, cut};
  if (digits == 0) {
    return kept;
  }
  std::uint64_t number = digits;
  int tens = power;
  for (; number >= 100 * kTenDigits; ++tens) {
    kept.cut = kept.cut || number % 10 != 0;
    number /= 10;
  }
  if (number >= 10 * kTenDigits) {
    kept.cut = kept.cut || number % 10 != 0;
    number = (number + 5) / 10;
    ++tens;
  }
  if (number == 10 * kTenDigits) {  // 9.9999999995
    number /= 10;
    ++tens;
  }
  for (; number < kTenDigits; --tens) {
    number *= 10;
  }
  if (tens < kLowestPower || tens > kHighestPower) {
    return std::nullopt;
  }
  kept.value.packed_ = (std::int64_t{tens} + Price::kBias) << Price::kDigitBits;
  kept.value.packed_ |= static_cast<std::int64_t>(number);
  return kept;
}

Kept<std::int64_t> Decimal::whole() const {
  std::uint64_t number = digits;
  int tens = power;
  for (; tens < 0 && number > 0; ++tens) {
    number /= 10;
  }
  for (; tens > 0 && number > 0 && number <= kHighestWhole / 10; --tens) {
    number *= 10;
  }
  const bool tooLarge = number > 0 && (tens > 0 || number > kHighestWhole);
  if (tooLarge) {
    return {kHighestWhole, true};
  }
  return {static_cast<std::int64_t>(number), false};
}

std::optional<Decimal> parseDecimal(std::string_view text, bool comma) {
  Decimal decimal;
  bool point = false;
  bool any = false;
  std::size_t i = 0;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (!point && (c == '.' || (comma && c == ','))) {
      point = true;
      continue;
    }
    if (!isDigit(c)) {
      break;
    }
    any = true;
    const bool kept = decimal.digits < kMostDigits;
    decimal.digits = kept ? decimal.digits * 10 + static_cast<unsigned>(c - '0') : decimal.digits;
    decimal.cut = decimal.cut || (!kept && c != '0');
    decimal.power += kept ? -int{point} : int{!point};
  }
  const auto exponent = any ? parseExponent(text.substr(i)) : std::nullopt;
  decimal.power += exponent.value_or(0);
  return exponent ? std::optional(decimal) : std::nullopt;
}

std::string changeText(Price last, Price before) {
  const int places = std::max(last.places(), before.places());
  const auto [smaller, larger] = std::minmax(last, before);
  const char* sign = last > before ? "+" : last < before ? "-" : "";
  return sign +
         withPoint(difference(larger.digitsWith(places), smaller.digitsWith(places)), places);
}

std::int64_t sumOfVolumes(std::int64_t one, std::int64_t other) {
  return one > kHighestWhole - other ? kHighestWhole : one + other;
}

}  // namespace quintara::quotes
