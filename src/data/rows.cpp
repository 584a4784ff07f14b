#include "data/rows.hpp"

#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara {

RowFields::RowFields(std::string_view row) {
  // An empty row has no fields at all, not one empty field.
  bool more = !row.empty();
  while (more && count_ < fields_.size()) {
    const auto separator = row.find('@');
    more = separator != std::string_view::npos;
    fields_.at(count_++) = row.substr(0, separator);
    if (more) {
      row.remove_prefix(separator + 1);
    }
  }
}

std::string_view RowFields::text(RowField field) const {
  if (field >= count_) {
    throw RuntimeError(ErrorKind::SubscriptOutOfRange);
  }
  return fields_.at(field);
}

float RowFields::number(RowField field) const { return toSingle(readLocaleNumber(text(field))); }

std::size_t firstBarRow(const ChartState& state, Date today) {
  if (state.sRows.empty()) {
    throw RuntimeError(ErrorKind::SubscriptOutOfRange);
  }
  const std::chrono::weekday day{std::chrono::sys_days{today}};
  const bool weekend = day == std::chrono::Saturday || day == std::chrono::Sunday;
  const bool unavailable = state.sRows[0].find("N/A") != std::string::npos;
  return weekend || unavailable || state.iInterval != 0 ? 1 : 0;
}

}  // namespace quintara
