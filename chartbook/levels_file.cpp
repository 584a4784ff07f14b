#include "chartbook/files.hpp"
#include "chartbook/new_file.hpp"

namespace quintara::chartbook {
namespace {

std::string field(const std::string& text) {
  if (text.find_first_of(",;\"") == text.npos) {
    return text;
  }
  std::string quoted = "\"";
  for (const char c : text) {
    quoted += c == '"' ? "\"\"" : std::string(1, c);
  }
  return quoted + "\"";
}

}  // namespace

void writeLevelsFile(const std::filesystem::path& path, const Reports& reports) {
  NewFile file(path);
  file.write("Ticker,Date,Close,Set,Level,Value,Distance\n");
  for (std::size_t piece = 0; piece < reports.size(); ++piece) {
    const Report report = reports.at(piece);
    for (const ReportedLevel& level : report.levels) {
      file.write(field(report.ticker) + "," + report.date + "," + report.close + "," + level.set +
                 "," + level.name + "," + level.value + "," + level.distance + "\n");
    }
  }
  file.commit();
}

}  // namespace quintara::chartbook
