#include "service/prices/report.hpp"

#include <algorithm>
#include <array>
#include <ostream>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kShownComplaints = 20;

constexpr auto kSeparators = std::to_array<std::pair<char, const char*>>(
    {{',', "comma"}, {';', "semicolon"}, {'\t', "tab"}, {'|', "bar"}});

std::string separatorName(char separator) {
  const auto* known = std::find_if(kSeparators.begin(), kSeparators.end(),
                                   [&](const auto& entry) { return entry.first == separator; });
  return known != kSeparators.end() ? known->second : "";
}

// Each by what it holds, its name if that is another one, and its place from 1 on.
std::string columnsText(const Reading& reading) {
  std::string text;
  for (const auto& [use, name, place] : reading.columns) {
    text += (text.empty() ? "" : ", ") + use;
    text += name.empty() || equalIgnoringCase(name, use) ? "" : " \"" + name + "\"";
    text += " (" + std::to_string(place + 1) + ")";
  }
  return text;
}

std::string because(const std::string& what, const std::string& why) {
  return what + (what.empty() || why.empty() ? "" : ": ") + why;
}

std::string counted(std::size_t count) { return count > 0 ? std::to_string(count) : ""; }

}  // namespace

void reportRows(const PriceRows& rows, std::ostream& out) {
  out << "  Days: " << rows.bars.size() << " of " << rows.rows
      << " rows; rows left out: " << rows.badLines;
  if (rows.remarks > 0) {
    out << "; lines below them that are no rows: " << rows.remarks;
  }
  out << "\n";
  const std::size_t shown = std::min(rows.complaints.size(), kShownComplaints);
  for (std::size_t i = 0; i < shown; ++i) {
    out << "    " << rows.complaints[i] << "\n";
  }
  if (rows.badLines > shown) {
    out << "    and " << rows.badLines - shown << " more\n";
  }
  for (const auto& [count, what] :
       {std::pair{rows.cutPrices, "a price of more than ten digits, of which ten are kept"},
        {rows.cutVolumes, "a volume beyond 64 bits, taken as the largest of these"}}) {
    if (count > 0) {
      out << "  Rows with " << what << ": " << count << "\n";
    }
  }
}

void report(const PriceFile& file, std::ostream& out) {
  const Reading& reading = file.reading;
  const std::pair<const char*, std::string> steps[] = {
      {"Encoding", reading.encoding},
      {"Separator", separatorName(reading.separator)},
      {"Header in line", counted(reading.headerLine)},
      {"Columns", columnsText(reading)},
      {"Dates", because(reading.dateOrder, reading.dateOrderWhy)},
      {"Decimal sign", because(reading.decimalSign, reading.decimalSignWhy)},
  };
  for (const auto& [step, text] : steps) {
    if (!text.empty()) {
      out << "  " << step << ": " << text << "\n";
    }
  }
  reportRows(file, out);
}

}  // namespace quintara::quotes
