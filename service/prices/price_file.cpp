#include "service/prices/price_file.hpp"

#include "service/text/csv_line.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kAbsent = static_cast<std::size_t>(-1);

struct Layout {
  char separator = ',';
  std::array<std::size_t, kColumns> positions{};  // kAbsent for a column that is not there
};

Layout layoutOf(std::string_view header, const ColumnNames& names) {
  Layout layout;
  layout.separator = header.find(';') == header.npos ? ',' : ';';
  layout.positions.fill(kAbsent);
  for (std::size_t position = 0; !header.empty(); ++position) {
    const auto name = takeField(header, layout.separator);
    for (std::size_t column = 0; column < kColumns; ++column) {
      if (layout.positions.at(column) == kAbsent && equalIgnoringCase(name, names.at(column))) {
        layout.positions.at(column) = position;
      }
    }
  }
  return layout;
}

Fields fieldsOf(std::string_view line, const Layout& layout) {
  Fields fields{};
  for (std::size_t position = 0; !line.empty(); ++position) {
    const auto field = takeField(line, layout.separator);
    for (std::size_t column = 0; column < kColumns; ++column) {
      if (layout.positions.at(column) == position) {
        fields.at(column) = field;
      }
    }
  }
  return fields;
}

std::string missingColumns(const Layout& layout, const RowRules& rules) {
  std::string missing;
  for (std::size_t column = rules.undated ? kOpen : kDate; column < kVolume; ++column) {
    if (layout.positions.at(column) == kAbsent) {
      missing += (missing.empty() ? "no column " : ", ") + escaped(rules.names.at(column));
    }
  }
  return missing;
}

}  // namespace

PriceFile parsePriceFile(std::string_view text, const RowRules& rules) {
  text = withoutByteOrderMark(text);
  std::string_view header;
  std::size_t number = 0;
  for (; header.empty() && !text.empty(); ++number) {
    header = takeLine(text);
  }
  const Layout layout = layoutOf(header, rules.names);
  PriceFile file;
  file.reading.separator = layout.separator;
  file.reading.headerLine = number;
  file.problem = missingColumns(layout, rules);
  if (!file.problem.empty()) {
    return file;
  }
  RowReader rows(rules, "line", layout.separator == ';');
  while (!text.empty()) {
    const auto line = takeLine(text);
    ++number;
    if (!line.empty()) {
      rows.add(number, fieldsOf(line, layout));
    }
  }
  static_cast<PriceRows&>(file) = rows.finish();
  return file;
}

}  // namespace quintara::quotes
