#include "service/prices/number_signs.hpp"

#include <algorithm>
#include <unordered_set>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

// Signs and codes of currencies, and what else stands beside numbers and does
// not change them.
constexpr auto kBeside = std::to_array<std::string_view>(
    {"US$", "A$",  "C$",  "HK$", "NT$", "S$",  "R$",  "NZ$", "MX$", "$",   "€",
     "£",   "¥",   "￥",  "₹",   "₽", "₺",   "₩",   "₪",   "฿",   "₫",   "₴",
     "zł",  "kr.", "kr",  "Kč",  "Ft",  "lei", "Rs.", "Rs",  "Fr.", "p",   "руб.",
     "руб", "元",  "円",  "원",  "USD", "EUR", "GBP", "GBX", "JPY", "CHF", "CAD",
     "AUD", "NZD", "SEK", "NOK", "DKK", "PLN", "CZK", "HUF", "RON", "TRY", "TL",
     "RUB", "UAH", "INR", "CNY", "HKD", "TWD", "KRW", "SGD", "BRL", "ZAR", "USDT"});

// Stand between groups of digits, as blanks do.
constexpr auto kGroupSigns =
    std::to_array<std::string_view>({"'", "_", "\xE2\x80\x99", "\xE2\x80\xB2", "\xC2\xB4"});

// The bytes of such a sign at a place, 0 if there is none.
std::size_t groupSignAt(std::string_view text, std::size_t at) {
  const auto isThere = [&](std::string_view sign) { return text.substr(at).starts_with(sign); };
  const auto* found = std::find_if(kGroupSigns.begin(), kGroupSigns.end(), isThere);
  return found != kGroupSigns.end() ? found->size() : blankAt(text, at);
}

bool isPlain(std::string_view text) {
  return !text.empty() && isDigit(text.front()) && isDigit(text.back());
}

bool isBeside(std::string_view text) {
  text = withoutBlanks(text);
  if (text.empty()) {
    return true;
  }
  static const auto known = [] {
    std::unordered_set<std::string> result;
    for (const auto beside : kBeside) {
      result.insert(upperCase(beside));
    }
    return result;
  }();
  return known.count(upperCase(text)) > 0;
}

std::string shown(std::size_t line, std::string_view text) {
  return "line " + std::to_string(line) + ": " + inQuotes(text);
}

const char* nameOfSign(bool comma) { return comma ? "comma" : "point"; }

}  // namespace

std::string_view bareNumber(std::string_view text) {
  if (isPlain(text)) {
    return text;
  }
  const auto first = std::find_if(text.begin(), text.end(), isDigit);
  if (first == text.end()) {
    return text;
  }
  // A sign right before or behind the digits belongs to them: .5 and 5.
  auto before = static_cast<std::size_t>(first - text.begin());
  const auto last = static_cast<std::size_t>(
      std::find_if(text.rbegin(), text.rend(), isDigit).base() - text.begin());
  auto end = last;
  if (!isBeside(text.substr(0, before)) && (text[before - 1] == '.' || text[before - 1] == ',')) {
    --before;
  }
  if (!isBeside(text.substr(end)) && (text[end] == '.' || text[end] == ',')) {
    ++end;
  }
  const bool bare = isBeside(text.substr(0, before)) && isBeside(text.substr(end));
  return bare ? text.substr(before, end - before) : text;
}

SignUse signUseOf(std::string_view text) {
  const auto sign = std::find_if_not(text.begin(), text.end(), isDigit);
  if (sign == text.end() && !text.empty()) {
    return SignUse::None;
  }
  text = bareNumber(text);
  std::size_t points = 0;
  std::size_t commas = 0;
  std::size_t behind = 0;  // digits behind the last sign
  std::size_t before = 0;  // digits before the first
  char last = '\0';
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    if (isDigit(c)) {
      behind += 1;
      before += last == '\0' ? 1 : 0;
      ++at;
      continue;
    }
    if (c == '.' || c == ',') {
      (c == '.' ? points : commas) += 1;
      last = c;
      behind = 0;
      ++at;
      continue;
    }
    const auto size = groupSignAt(text, at);
    if (size == 0) {
      return SignUse::Wrong;
    }
    at += size;
  }
  if (points + commas == 0) {
    return SignUse::None;
  }
  const bool comma = last == ',';
  const auto decimal = comma ? SignUse::Comma : SignUse::Point;
  const auto group = comma ? SignUse::Point : SignUse::Comma;
  if (points > 0 && commas > 0) {
    return (comma ? commas : points) == 1 ? decimal : SignUse::Wrong;
  }
  if (points + commas > 1) {
    return behind == 3 ? group : SignUse::Wrong;
  }
  if (behind != 3 || before == 0 || before > 3 || text.front() == '0') {
    return decimal;
  }
  return comma ? SignUse::UnclearComma : SignUse::UnclearPoint;
}

std::optional<std::string_view> plainNumber(std::string_view text, bool comma, std::string& plain) {
  text = bareNumber(text);
  const char decimal = comma ? ',' : '.';
  const auto isPart = [comma](char c) { return isDigit(c) || (c == '.' && !comma); };
  if (std::all_of(text.begin(), text.end(), isPart)) {
    return text;
  }
  plain.clear();
  std::size_t group = 0;  // digits since the last group sign
  bool grouped = false;   // a group sign was there
  std::size_t at = 0;
  for (; at < text.size() && text[at] != decimal && text[at] != 'e' && text[at] != 'E';) {
    if (isDigit(text[at])) {
      plain += text[at++];
      ++group;
      continue;
    }
    const bool other = text[at] == (comma ? '.' : ',');
    const auto size = other ? 1 : groupSignAt(text, at);
    const bool fits = grouped ? group == 3 || group == 2 : group >= 1 && group <= 3;
    if (size == 0 || !fits) {
      return std::nullopt;
    }
    grouped = true;
    group = 0;
    at += size;
  }
  if (grouped && group != 3) {
    return std::nullopt;
  }
  if (at < text.size() && text[at] == decimal) {
    plain += '.';
    ++at;
  }
  plain += text.substr(at);
  const bool right = std::all_of(
      text.begin() + static_cast<std::ptrdiff_t>(at), text.end(),
      [](char c) { return isDigit(c) || c == 'e' || c == 'E' || c == '+' || c == '-'; });
  return right ? std::optional<std::string_view>(plain) : std::nullopt;
}

bool isNothing(std::string_view text) {
  if (!text.empty() && isDigit(text.front())) {
    return false;
  }
  constexpr auto kNothing = std::to_array<std::string_view>(
      {"",    "-",    "--",   "---",  "N/A",     "#N/A",         "NA",
       "NaN", "null", "none", "nil",  ".",       "..",           "\\N",
       "n/d", "n.d.", "k.A.", "n.a.", "#VALUE!", "\xE2\x80\x93", "\xE2\x80\x94"});
  return std::any_of(kNothing.begin(), kNothing.end(),
                     [&](auto nothing) { return equalIgnoringCase(nothing, text); });
}

void SignEvidence::Seen::add(std::size_t at, std::string_view what) {
  if (count++ == 0) {
    line = at;
    text = what;
  }
}

void SignEvidence::addPrice(std::size_t line, std::string_view text) {
  const auto use = signUseOf(text);
  prices_.at(static_cast<std::size_t>(use)).add(line, text);
  if (use == SignUse::None && text.size() >= 4 && std::all_of(text.begin(), text.end(), isDigit)) {
    longs_.add(line, text);
  }
}

void SignEvidence::addOther(std::size_t line, std::string_view text) {
  while (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    text.remove_prefix(1);
  }
  while (!text.empty() && (text.back() == '%' || text.back() == ' ')) {
    text.remove_suffix(1);
  }
  if (!text.empty() && isDigit(text.front())) {
    others_.at(static_cast<std::size_t>(signUseOf(text))).add(line, text);
  }
}

std::optional<SignFound> SignEvidence::proven(const Seens& seen) {
  const Seen& point = seen.at(static_cast<std::size_t>(SignUse::Point));
  const Seen& comma = seen.at(static_cast<std::size_t>(SignUse::Comma));
  const auto less = std::min(point.count, comma.count);
  const auto more = std::max(point.count, comma.count);
  if (more == 0) {
    return std::nullopt;
  }
  if (less * 20 > more) {
    SignFound found;
    found.problem = "the numbers contradict each other, " + shown(point.line, point.text) +
                    " has a decimal point, " + shown(comma.line, comma.text) +
                    " a decimal comma: write all numbers the same way";
    return found;
  }
  const bool isComma = comma.count == more;
  const Seen& first = isComma ? comma : point;
  return SignFound{isComma, true, shown(first.line, first.text) + " shows it", false, ""};
}

SignFound SignEvidence::decide() const {
  if (const auto found = proven(prices_)) {
    return *found;
  }
  const Seen& points = prices_.at(static_cast<std::size_t>(SignUse::UnclearPoint));
  const Seen& commas = prices_.at(static_cast<std::size_t>(SignUse::UnclearComma));
  SignFound found;
  if (points.count + commas.count == 0) {
    const auto other = proven(others_);
    found.comma = other && other->problem.empty() && other->comma;
    return found;
  }
  found.any = true;
  if (points.count > 0 && commas.count > 0) {
    found.problem = "the numbers contradict each other, " + shown(points.line, points.text) +
                    " and " + shown(commas.line, commas.text) +
                    ": write all numbers with a decimal point";
    return found;
  }
  const auto other = proven(others_);
  if (other && other->problem.empty()) {
    return *other;
  }
  const bool comma = commas.count > 0;
  if (longs_.count > 0) {
    found.comma = comma;
    found.why = shown(longs_.line, longs_.text) + " has no sign between its thousands";
    return found;
  }
  const Seen& seen = comma ? commas : points;
  found.unclear = true;
  found.comma = comma;
  found.problem = shown(seen.line, seen.text) +
                  " may have three decimals or be above a thousand, "
                  "and no number of the file decides whether its " +
                  nameOfSign(comma) + " is a decimal sign: export prices with two or four decimals";
  return found;
}

}  // namespace quintara::quotes
