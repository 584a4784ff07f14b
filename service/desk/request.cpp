#include "service/desk/request.hpp"

#include <algorithm>
#include <charconv>
#include <optional>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kLongestTicker = 100;
constexpr std::string_view kQuoteFields = "sl1d1t1c1ohgv";

// The value of the first parameter with this key, still percent-encoded.
std::optional<std::string_view> rawValue(std::string_view target, std::string_view key) {
  auto query = target.substr(std::min(target.find('?'), target.size()));
  while (!query.empty()) {
    query.remove_prefix(1);  // the question mark or ampersand
    const auto part = query.substr(0, query.find('&'));
    query.remove_prefix(part.size());
    const auto equals = part.find('=');
    if (equals != part.npos && part.substr(0, equals) == key) {
      return part.substr(equals + 1);
    }
  }
  return std::nullopt;
}

// A percent sign that begins no escape stands for itself.
std::string percentDecoded(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned char byte = 0;
    const char* hex = text.data() + i + 1;
    if (text[i] == '%' && text.size() - i > 2 &&
        std::from_chars(hex, hex + 2, byte, 16).ptr == hex + 2) {
      result += static_cast<char>(byte);
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

bool canExist(std::string_view ticker) {
  constexpr std::string_view kForbidden = "/\\,\"\x7f";
  return ticker.find_first_of(kForbidden) == ticker.npos && ticker.find("..") == ticker.npos &&
         std::none_of(ticker.begin(), ticker.end(),
                      [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

std::string tickerOf(std::string_view target) {
  return parseTicker(percentDecoded(rawValue(target, "s").value_or("")));
}

// A date in three parameters: month, day, year.
Day dateOf(std::string_view target, std::string_view keys, const std::string& name) {
  const auto number = [&](std::size_t i) {
    const auto value = rawValue(target, keys.substr(i, 1));
    return value ? parseCount(*value) : std::nullopt;
  };
  const auto month = number(0);
  const auto day = number(1);
  const auto year = number(2);
  const auto date = month && day && year
                        ? makeDay(*year, static_cast<unsigned>(*month), static_cast<unsigned>(*day))
                        : std::nullopt;
  if (!date) {
    throw Refusal(400, "the " + name + " is missing or not a date");
  }
  return *date;
}

Interval intervalOf(std::string_view target) {
  const auto letter = rawValue(target, "g").value_or("");
  if (letter == "d") {
    return Interval::Daily;
  }
  if (letter == "w") {
    return Interval::Weekly;
  }
  if (letter == "m") {
    return Interval::Monthly;
  }
  throw Refusal(400, "the interval (g) is not one of d, w and m");
}

}  // namespace

std::string parseTicker(std::string_view ticker) {
  if (ticker.empty()) {
    throw Refusal(400, "the ticker (s) is missing");
  }
  if (ticker.size() > kLongestTicker) {
    throw Refusal(400, "the ticker (s) is longer than 100 bytes");
  }
  if (!canExist(ticker)) {
    throw Refusal(404,
                  "no prices for " + escaped(ticker) +
                      ": no ticker has a slash, comma, quotation mark, control character or ..");
  }
  return upperCase(ticker);
}

TableRequest parseTableRequest(std::string_view target) {
  TableRequest request;
  request.ticker = tickerOf(target);
  request.first = dateOf(target, "abc", "start date (a, b, c: month, day, year)");
  request.last = dateOf(target, "def", "end date (d, e, f: month, day, year)");
  request.interval = intervalOf(target);
  if (request.first > request.last) {
    throw Refusal(400, "the start date is after the end date");
  }
  return request;
}

std::string parseQuoteRequest(std::string_view target) {
  if (rawValue(target, "f").value_or(kQuoteFields) != kQuoteFields) {
    throw Refusal(400, "only the fields (f) " + std::string(kQuoteFields) + " are served");
  }
  return tickerOf(target);
}

}  // namespace quintara::quotes
