// What a provider on the network sends. Input: a line with the order of dates (u, m or d), the
// hours from Greenwich (a letter from A = -12 on) and the path to the rows; a line with the names
// of the six fields, commas between them; the reply.

#include <string>

#include "checked_rows.hpp"
#include "service/prices/day_forms.hpp"
#include "service/prices/json_rows.hpp"
#include "service/prices/price_file.hpp"

namespace quintara::fuzz {

namespace {

using namespace quotes;

DayForms dayForms(char order, char hours) {
  DayForms forms;
  forms.order = order == 'm'   ? DayOrder::MonthFirst
                : order == 'd' ? DayOrder::DayFirst
                               : DayOrder::Unclear;
  forms.utcOffsetHours = static_cast<unsigned char>(hours - 'A') % 27 - 12;
  return forms;
}

RowRules rulesOf(const DayForms& forms, std::string_view names) {
  RowRules rules;
  rules.days = forms;
  for (std::string& name : rules.names) {
    const auto given = take(names, ',');
    if (!given.empty()) name = given;  // settings without a value are refused
  }
  return rules;
}

}  // namespace

void tryInput(std::string_view input) {
  std::string_view line = take(input, '\n');
  if (line.size() < 2) return;
  const DayForms forms = dayForms(line[0], line[1]);
  const std::string path(line.substr(2));
  const auto names = take(input, '\n');
  const RowRules rules = rulesOf(forms, names);

  checkRows(parsePriceFile(std::string(input), rules), names.size());
  if (!isJsonPath(path)) return;
  const PriceRows rows = parseJsonRows(input, path, rules);
  checkRows(rows, names.size() + path.size());
  check(rows.bars.size() + rows.badLines <= input.size(), "no row counts twice");
}

}  // namespace quintara::fuzz
