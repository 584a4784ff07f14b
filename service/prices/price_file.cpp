#include "service/prices/price_file.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "service/prices/price_table.hpp"
#include "service/prices/table_evidence.hpp"
#include "service/tables/decoded_text.hpp"
#include "service/tables/table_rows.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kShortestRow = 16;  // 1.1.70,1,1,1,1

// Tried where the text is no UTF-8 and names no columns as Windows-1252.
constexpr std::array kOtherEncodings{"Windows-1250", "Windows-1251", "Windows-1253", "Windows-1254",
                                     "Windows-1255", "Windows-1256", "CP932",        "GB18030",
                                     "BIG5",         "CP949",        "CP874"};

void describe(Reading& reading, const PriceTable& table) {
  reading.separator = table.separator;
  reading.headerLine = table.headerLine;
  for (std::size_t use = 0; use < kUses; ++use) {
    const auto place = table.places.at(use);
    if (place != PriceTable::kAbsent) {
      const std::string name = place < table.names.size() ? escaped(table.names[place]) : "";
      reading.columns.push_back({std::string(nameOf(static_cast<Use>(use))), name, place});
    }
  }
}

void describe(Reading& reading, const TableEvidence& evidence) {
  reading.dateOrder = nameOf(evidence.order.order);
  reading.dateOrderWhy = evidence.order.why;
  reading.decimalSign = !evidence.signs.any ? "" : evidence.signs.comma ? "comma" : "point";
  reading.decimalSignWhy = evidence.signs.why;
}

std::size_t mostRows(std::string_view text) {
  const auto lines =
      std::count(text.begin(), text.end(), '\n') + std::count(text.begin(), text.end(), '\r');
  return std::min(static_cast<std::size_t>(lines) + 1, text.size() / kShortestRow + 1);
}

bool hasMoreThan(const TableRows& row, std::size_t width) {
  for (std::size_t place = width; place < row.size(); ++place) {
    if (!row[place].empty()) {
      return true;
    }
  }
  return false;
}

std::string columnsTooMany(std::size_t columns, const PriceTable& table) {
  return std::to_string(columns) + " columns instead of " + std::to_string(table.width) +
         (table.separator == ',' ? ", as when decimal commas stand between commas" : "");
}

PriceRows rowsOf(std::string_view text, const PriceTable& table, const TableEvidence& evidence,
                 RowRules rules) {
  rules.days = {evidence.order.order, evidence.utcOffsetHours};
  RowReader reader(rules, "line", {evidence.signs.comma, evidence.signs.any}, mostRows(text));
  TableRows rows(text, table.separator);
  while (rows.next()) {
    if (!isRowOf(rows, table)) {
      continue;
    }
    if (!evidence.ticker.empty() && rows[table.at(Use::Ticker)] != evidence.ticker) {
      continue;
    }
    if (table.width > 0 && hasMoreThan(rows, table.width)) {
      reader.leaveOut(rows.line(), columnsTooMany(rows.size(), table));
      continue;
    }
    reader.add(rows.line(), table.fieldsOf(rows), table.timeOf(rows));
  }
  return reader.finish();
}

// Whether a table without names is what it seems to be: in every row the second price is the
// highest and the third the lowest, and not all are the same.
bool isCertain(const PriceRows& rows) {
  const auto differs = [](const DailyBar& bar) { return bar.high != bar.low; };
  return rows.badLines == 0 && rows.bars.size() >= 2 &&
         std::any_of(rows.bars.begin(), rows.bars.end(), differs);
}

void readWithoutNames(PriceFile& file, std::string_view text, const std::string& separators,
                      const RowRules& rules) {
  constexpr auto kNoHeader =
      "no line names the columns, and without names only a date, perhaps a time, open, high, low, "
      "close "
      "and perhaps a volume are certain: write a line like Date,Open,High,Low,Close,Volume above "
      "the rows";
  std::size_t found = 0;
  for (const PriceTable& table : tablesWithoutNames(text, separators, rules)) {
    const auto evidence = evidenceOf(text, table, rules);
    if (!evidence.problem.empty()) {
      file.problem = evidence.problem;
      continue;
    }
    PriceRows rows = rowsOf(text, table, evidence, rules);
    if (isCertain(rows) && ++found == 1) {
      static_cast<PriceRows&>(file) = std::move(rows);
      describe(file.reading, table);
      describe(file.reading, evidence);
    }
  }
  if (found != 1) {
    const std::string problem = found == 0 ? file.problem : "";
    static_cast<PriceRows&>(file) = {};
    file.problem = problem.empty() ? kNoHeader : problem;
  }
}

void readTable(PriceFile& file, std::string_view text, const PriceTable& table,
               const RowRules& rules) {
  describe(file.reading, table);
  const auto evidence = evidenceOf(text, table, rules);
  describe(file.reading, evidence);
  file.problem = evidence.problem;
  file.readable = true;
  if (!evidence.problem.empty()) {
    return;
  }
  static_cast<PriceRows&>(file) = rowsOf(text, table, evidence, rules);
  if (table.ticks && file.rows < 2 * file.bars.size()) {
    static_cast<PriceRows&>(file) = {};
    file.problem = "no column Open, High, Low, and not several rows a day to make them of";
  }
}

// In the first encoding in which some line names the columns.
TableFound tableInAnyEncoding(DecodedText& text, std::string& separators, const RowRules& rules) {
  TableFound found = tableByPlaces(text.text, separators, rules);
  found = found.table ? found : tableByNames(text.text, separators, rules);
  for (const char* encoding : kOtherEncodings) {
    if (found.table || text.bytes.empty()) {
      break;
    }
    constexpr std::size_t kSample = 65'536;
    const auto sample = converted(std::string_view(text.bytes).substr(0, kSample), encoding);
    if (tableByNames(sample, separatorsOf(sample), rules).table) {
      text.text = converted(text.bytes, encoding);
      text.encoding = encoding;
      separators = separatorsOf(text.text);
      found = tableByNames(text.text, separators, rules);
    }
  }
  text.bytes = {};
  return found;
}

bool isJson(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  return first != text.npos && (text[first] == '{' || text[first] == '[');
}

}  // namespace

PriceFile parsePriceFile(std::string bytes, const RowRules& rules) {
  PriceFile file;
  DecodedText text = decoded(std::move(bytes));
  file.problem = text.problem.empty() && isJson(text.text)
                     ? "JSON, not a table: export the prices as CSV"
                     : text.problem;
  if (!file.problem.empty()) {
    file.reading.encoding = text.encoding;
    return file;
  }
  std::string separators = separatorsOf(text.text);
  const TableFound found = tableInAnyEncoding(text, separators, rules);
  file.reading.encoding = text.encoding;
  if (found.table) {
    readTable(file, text.text, *found.table, rules);
  } else if (found.named) {
    file.problem = found.problem;
    file.reading.separator = separators.front();
  } else {
    readWithoutNames(file, text.text, separators, rules);
  }
  return file;
}

}  // namespace quintara::quotes
