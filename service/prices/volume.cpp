#include "service/prices/volume.hpp"

#include <algorithm>
#include <array>
#include <map>

#include "service/prices/number_signs.hpp"
#include "service/tables/plain_name.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

struct Unit {
  std::string_view name;
  int power;
};

constexpr std::array kUnits{
    Unit{"k", 3},   Unit{"tsd", 3}, Unit{"tys", 3},  Unit{"tis", 3},  Unit{"тыс", 3},
    Unit{"mil", 3}, Unit{"m", 6},   Unit{"mn", 6},   Unit{"mm", 6},   Unit{"mio", 6},
    Unit{"mln", 6}, Unit{"млн", 6}, Unit{"b", 9},    Unit{"bn", 9},   Unit{"bln", 9},
    Unit{"mrd", 9}, Unit{"mld", 9}, Unit{"md", 9},   Unit{"млрд", 9}, Unit{"t", 12},
    Unit{"tn", 12}, Unit{"万", 4},  Unit{"萬", 4},   Unit{"만", 4},   Unit{"億", 8},
    Unit{"亿", 8},  Unit{"억", 8},  Unit{"lakh", 5}, Unit{"cr", 7},   Unit{"crore", 7},
};

// Takes a unit off the end and returns its power of ten; no value for a word that is none.
std::optional<int> takeUnit(std::string_view& text) {
  const auto last = std::find_if(text.rbegin(), text.rend(), isDigit);
  const auto size = static_cast<std::size_t>(text.rend() - last);
  const auto word = text.substr(size);
  if (std::none_of(word.begin(), word.end(), isLetter)) {
    return 0;
  }
  static const auto powers = [] {
    std::map<std::string, int, std::less<>> result;
    for (const Unit& unit : kUnits) {
      result.emplace(plainName(unit.name), unit.power);
    }
    return result;
  }();
  const bool letter = word.size() == 1;
  const auto unit = letter ? powers.find(lowerCase(word)) : powers.find(plainName(word));
  if (unit == powers.end()) {
    return std::nullopt;
  }
  text = text.substr(0, size);
  return unit->second;
}

bool isComma(SignUse use, bool comma, bool known, bool unit) {
  switch (use) {
    case SignUse::Point:
      return known && comma && !unit;
    case SignUse::Comma:
      return !known || comma || unit;
    case SignUse::UnclearPoint:
      return known ? comma : !unit;
    case SignUse::UnclearComma:
      return known ? comma : unit;
    default:
      return comma;
  }
}

}  // namespace

std::optional<Decimal> parseVolume(std::string_view text, bool comma, bool known,
                                   std::string& plain) {
  if (std::all_of(text.begin(), text.end(), isDigit) && !text.empty()) {
    return parseDecimal(text, false);
  }
  if (isNothing(text)) {
    return Decimal{};
  }
  auto bare = bareNumber(text);
  const auto power = takeUnit(bare);
  if (!power) {
    return std::nullopt;
  }
  const bool decimalComma = isComma(signUseOf(bare), comma, known, *power > 0);
  const auto number = plainNumber(bare, decimalComma, plain);
  auto decimal = number ? parseDecimal(*number, false) : std::nullopt;
  if (decimal) {
    decimal->power += *power;
  }
  return decimal;
}

}  // namespace quintara::quotes
