#include "service/prices/price_rows.hpp"

#include <algorithm>
#include <utility>

#include "service/prices/number_signs.hpp"
#include "service/prices/volume.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kLongestQuoted = 40;

// Whole or not at all: whoever hides a secret in the complaint must not meet half of it.
std::string notUnderstood(const std::string& name, std::string_view text) {
  const std::string shown = escaped(name);
  if (text.empty()) {
    return shown + " is missing";
  }
  return shown + (text.size() > kLongestQuoted ? "" : " \"" + escaped(text) + "\"") +
         " is not understood";
}

// With the first sign that is none of a number.
std::string notUnderstoodNumber(const std::string& name, std::string_view text, bool comma) {
  const auto isOfNumber = [&](char c) { return isDigit(c) || c == (comma ? ',' : '.'); };
  const auto other = std::find_if_not(text.begin(), text.end(), isOfNumber);
  const bool oneSign =
      other != text.begin() && other != text.end() && *other > ' ' && *other < '\x7f';
  return notUnderstood(name, text) + (oneSign ? std::string(" for its ") + *other : "");
}

}  // namespace

std::string implausible(const DailyBar& bar) {
  if (bar.low == Price()) {
    return "a price is not above 0";
  }
  if (bar.low > std::min(bar.open, bar.close)) {
    return "the low is not the lowest price";
  }
  return bar.high < std::max(bar.open, bar.close) ? "the high is not the highest price" : "";
}

std::optional<Kept<Price>> priceIn(std::string_view text, bool comma, std::string& plain) {
  const auto number = plainNumber(text, comma, plain);
  const auto decimal = number ? parseDecimal(*number, false) : std::nullopt;
  return decimal ? decimal->price() : std::nullopt;
}

struct RowReader::Row {
  DailyBar bar;
  bool undated = false;
  int second = 0;
  bool cutPrice = false;
  bool cutVolume = false;
};

// Each of these returns what is wrong; nothing if all is well.
std::string RowReader::readDate(Row& row, std::string_view date, std::string_view time) {
  row.undated = date.empty() && rules_.undated;
  if (row.undated) {
    return "";
  }
  const auto moment = moments_.read(date, time);
  const auto day = moment ? moment->dayIn(rules_.days.order) : std::nullopt;
  if (!day) {
    const bool unclear = moment && rules_.days.order == DayOrder::Unclear;
    return notUnderstood(rules_.names[kDate], date) +
           (unclear ? ", it may begin with the day or the month" : "");
  }
  row.bar.date = *day;
  row.second = moment->second;
  return "";
}

std::string RowReader::readPrices(Row& row, const Fields& fields) {
  for (const auto& [column, target] : kPriceColumns) {
    const auto price = priceIn(fields.at(column), signs_.comma, plain_);
    if (!price) {
      return notUnderstoodNumber(rules_.names.at(column), fields.at(column), signs_.comma);
    }
    row.bar.*target = price->value;
    row.cutPrice = row.cutPrice || price->cut;
  }
  return "";
}

std::string RowReader::readVolume(Row& row, std::string_view text) {
  const auto volume = parseVolume(text, signs_.comma, signs_.known, plain_);
  if (!volume) {
    return notUnderstoodNumber(rules_.names[kVolume], text, signs_.comma);
  }
  row.bar.volume = volume->whole().value;
  row.cutVolume = volume->whole().cut;
  return "";
}

// A line below the rows may say where they come from.
bool RowReader::isRemark(const Fields& fields) {
  const auto isPrice = [&](const auto& price) {
    return priceIn(fields.at(price.first), signs_.comma, plain_).has_value();
  };
  return std::count_if(kPriceColumns.begin(), kPriceColumns.end(), isPrice) < 2;
}

void RowReader::add(std::size_t number, const Fields& fields, std::string_view time) {
  Row row;
  std::string wrong = readDate(row, fields[kDate], time);
  const bool remark = !wrong.empty() && isRemark(fields);
  wrong = wrong.empty() ? readPrices(row, fields) : wrong;
  wrong = wrong.empty() ? readVolume(row, fields[kVolume]) : wrong;
  wrong = wrong.empty() ? implausible(row.bar) : wrong;
  if (!wrong.empty()) {
    bars_.leaveOut(number, wrong, remark);
    return;
  }
  row.bar.date = row.undated ? rules_.undated(row.bar) : row.bar.date;
  bars_.add(row.bar, number, row.second, row.cutPrice, row.cutVolume);
}

}  // namespace quintara::quotes
