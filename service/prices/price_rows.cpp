#include "service/prices/price_rows.hpp"

#include <algorithm>
#include <utility>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kComplaints = 100;
constexpr std::size_t kLongestQuoted = 40;

// Without the commas between groups of three digits; as it is if commas stand otherwise.
std::string ungrouped(std::string_view text) {
  const auto end = std::min(text.find('.'), text.size());
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool between = i > 0 && i < end && (end - i) % 4 == 0;
    if (between != (text[i] == ',')) {
      return std::string(text);
    }
    result += between ? "" : std::string(1, text[i]);
  }
  return result;
}

std::optional<Decimal> parseVolume(std::string_view text, bool comma) {
  if (text.empty() || text == "-" || equalIgnoringCase(text, "N/A") ||
      equalIgnoringCase(text, "null")) {
    return Decimal{};
  }
  return parseDecimal(comma ? text : ungrouped(text), comma);
}

std::optional<Kept<Price>> parsePrice(std::string_view text, bool comma) {
  const auto decimal = parseDecimal(text, comma);
  return decimal ? decimal->price() : std::nullopt;
}

// Whole or not at all: whoever hides a secret in the complaint must not meet half of it.
std::string notUnderstood(const std::string& name, std::string_view text) {
  const std::string shown = escaped(name);
  if (text.empty()) {
    return shown + " is missing";
  }
  return shown + (text.size() > kLongestQuoted ? "" : " \"" + escaped(text) + "\"") +
         " is not understood";
}

std::string implausible(const DailyBar& bar) {
  if (bar.low == Price()) {
    return "a price is not above 0";
  }
  if (bar.low > std::min(bar.open, bar.close)) {
    return "the low is not the lowest price";
  }
  return bar.high < std::max(bar.open, bar.close) ? "the high is not the highest price" : "";
}

}  // namespace

// Returns why the row is a bad one; nothing for a good one.
std::string RowReader::addGood(std::size_t number, const Fields& fields) {
  DailyBar bar;
  bool cutPrice = false;
  const bool undated = fields[kDate].empty() && rules_.undated;
  const auto date = undated ? Day() : rules_.readDay(fields[kDate]);
  if (!date) {
    return notUnderstood(rules_.names[kDate], fields[kDate]);
  }
  for (const auto& [column, target] : {std::pair{kOpen, &bar.open}, std::pair{kHigh, &bar.high},
                                       std::pair{kLow, &bar.low}, std::pair{kClose, &bar.close}}) {
    const auto price = parsePrice(fields.at(column), comma_);
    if (!price) {
      return notUnderstood(rules_.names.at(column), fields.at(column));
    }
    *target = price->value;
    cutPrice = cutPrice || price->cut;
  }
  const auto volume = parseVolume(fields[kVolume], comma_);
  if (!volume) {
    return notUnderstood(rules_.names[kVolume], fields[kVolume]);
  }
  bar.volume = volume->whole().value;
  bar.date = undated ? rules_.undated(bar) : *date;
  auto reason = implausible(bar);
  if (reason.empty()) {
    good_.push_back({bar, number});
    result_.cutPrices += cutPrice ? 1 : 0;
    result_.cutVolumes += volume->whole().cut ? 1 : 0;
  }
  return reason;
}

void RowReader::complain(std::size_t number, const std::string& what) {
  ++result_.badLines;
  if (result_.complaints.size() < kComplaints) {
    result_.complaints.push_back(std::string(kind_) + " " + std::to_string(number) + ": " + what);
  }
}

void RowReader::add(std::size_t number, const Fields& fields) {
  const auto reason = addGood(number, fields);
  if (!reason.empty()) {
    complain(number, reason);
  }
}

// Exports come in either order; of two rows with one date the first stands.
PriceRows RowReader::finish() {
  std::stable_sort(good_.begin(), good_.end(),
                   [](const Numbered& a, const Numbered& b) { return a.bar.date < b.bar.date; });
  result_.readable = true;
  for (const auto& [bar, number] : good_) {
    if (result_.bars.empty() || result_.bars.back().date != bar.date) {
      result_.bars.push_back(bar);
    } else {
      complain(number, "the date " + tableDate(bar.date) + " is there already");
    }
  }
  if (result_.bars.empty()) {
    result_.problem = "no usable line, " + std::to_string(result_.badLines) + " bad ones";
  }
  return std::move(result_);
}

}  // namespace quintara::quotes
