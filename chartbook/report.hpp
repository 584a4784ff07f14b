#pragma once

#include <string>
#include <vector>

#include "chartbook/session.hpp"

namespace quintara::chartbook {

/// A level for files: numbers with a full stop, whatever the user's separator is.
struct ReportedLevel {
  std::string set;   ///< A1 to A4
  std::string kind;  ///< retracement or target
  std::string name;  ///< 38.2%, 1.618 ...
  std::string value;
  std::string distance;  ///< from the newest close in per cent of it, two decimals; may be empty
};

/// What became of one order. Numbers with a full stop, dates as 2026-11-05.
struct Report {
  std::size_t line = 0;  ///< of the watch list
  std::string ticker;
  std::string failure;  ///< why there is no chart; if set, what follows is empty
  std::string interval;
  std::string span;
  std::string picture;  ///< the file's name
  int width = 0;        ///< of the picture in logical pixels
  int height = 0;
  std::string summary;  ///< the chart in a sentence, as the window says it
  std::string date;     ///< of the newest bar
  std::string close;
  std::vector<ReportedLevel> levels;

  /// How near the close is to a level, in per cent; far away without levels.
  [[nodiscard]] double nearest() const;
};

/// What the session shows of its levels, and with a chart how far they are from its close.
std::vector<ReportedLevel> reportedLevels(const Session& session, bool hasChart);
/// What the session shows of its chart; picture and size are the caller's to tell.
Report reportOf(const Session& session, const Order& order);

Report failedReport(const Order& order, const std::string& why);

/// A report as one line of text, and back.
std::string packed(const Report& report);
Report unpacked(const std::string& text);

/// For programs: an object with the names of levels.csv.
std::string jsonText(const Report& report);
std::string jsonText(const std::vector<ReportedLevel>& levels);

}  // namespace quintara::chartbook
