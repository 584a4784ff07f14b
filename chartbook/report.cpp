#include "chartbook/report.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "service/prices/day_forms.hpp"
#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara::chartbook {

using Json = nlohmann::ordered_json;

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(ReportedLevel, set, kind, name, value, distance)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Report, line, ticker, failure, interval, span, picture, width,
                                   height, summary, date, close, levels)

namespace {

/// The same number for a file.
std::string withFullStop(std::string caption) {
  if (sDecimalSep.size() == 1) {
    std::replace(caption.begin(), caption.end(), sDecimalSep.front(), '.');
  }
  return caption;
}

/// The date of a bar, which is written as the service writes it, in the form of files; as it stands
/// if it is none. Bars are seldom older than a few days.
std::string isoDate(const std::string& caption) {
  constexpr std::chrono::days kOldest{100 * 365};
  const quotes::Day today = quotes::localToday();
  for (quotes::Day day = today; day > today - kOldest; day -= std::chrono::days{1}) {
    if (quotes::tableDate(day) == caption) {
      return quotes::momentText(day, "%Y-%m-%d");
    }
  }
  return caption;
}

std::string distance(const std::string& level, const std::string& close) {
  const double from = readLocaleNumber(close);
  return from == 0
             ? ""
             : withFullStop(twoDecimals(toSingle((readLocaleNumber(level) - from) / from * 100)));
}

/// Text from outside may be no UTF-8.
template <class AnyJson>
std::string dumped(const AnyJson& json) {
  return json.dump(-1, ' ', false, AnyJson::error_handler_t::replace);
}

/// A number stays as it was written: it is text until here.
Json number(const std::string& text) { return text.empty() ? Json() : Json::parse(text); }

Json publicJson(const std::vector<ReportedLevel>& levels) {
  Json list = Json::array();
  for (const ReportedLevel& level : levels) {
    Json entry{{"set", level.set}, {"level", level.name}, {"value", number(level.value)}};
    if (!level.distance.empty()) {
      entry["distance"] = number(level.distance);
    }
    list.push_back(entry);
  }
  return list;
}

}  // namespace

double Report::nearest() const {
  double least = std::numeric_limits<double>::infinity();
  for (const ReportedLevel& level : levels) {
    if (!level.distance.empty()) {
      least = std::min(least, std::abs(readLeadingNumber(level.distance)));
    }
  }
  return least;
}

std::vector<ReportedLevel> reportedLevels(const Session& session, bool hasChart) {
  std::vector<ReportedLevel> levels;
  for (const Level& level : session.levels()) {
    levels.push_back({level.place->set, level.place->kind, level.place->name,
                      withFullStop(level.caption),
                      hasChart ? distance(level.caption, session.caption("lblClose")) : ""});
  }
  return levels;
}

Report reportOf(const Session& session, const Order& order) {
  Report report;
  report.line = order.line;
  report.ticker = order.fields.at(kTicker);
  report.interval = session.chosen("cboInterval");
  report.span = session.chosen("cboDuration");
  report.summary = session.chart().description();
  report.date = isoDate(session.caption("lblDate"));
  report.close = withFullStop(session.caption("lblClose"));
  report.levels = reportedLevels(session, true);
  return report;
}

Report failedReport(const Order& order, const std::string& why) {
  Report report;
  report.line = order.line;
  report.ticker = order.fields.at(kTicker);
  report.failure = why;
  return report;
}

std::string packed(const Report& report) { return dumped(nlohmann::json(report)); }

Report unpacked(const std::string& text) { return nlohmann::json::parse(text).get<Report>(); }

std::string jsonText(const std::vector<ReportedLevel>& levels) {
  return dumped(Json{{"levels", publicJson(levels)}});
}

std::string jsonText(const Report& report) {
  Json json{{"ticker", report.ticker}};
  if (report.failure.empty()) {
    json["picture"] = report.picture;
    json["date"] = report.date;
    json["close"] = number(report.close);
    json["levels"] = publicJson(report.levels);
  } else {
    json["failure"] = report.failure;
  }
  return dumped(json);
}

}  // namespace quintara::chartbook
