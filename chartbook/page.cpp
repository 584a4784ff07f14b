#include <algorithm>
#include <cmath>

#include "chartbook/files.hpp"
#include "chartbook/new_file.hpp"
#include "chartbook/page_style.hpp"
#include "service/prices/day_forms.hpp"
#include "service/text/text.hpp"
#include "values/text.hpp"

namespace quintara::chartbook {
namespace {

std::string tag(const std::string& name, const std::string& text) {
  return "<" + name + ">" + htmlEscaped(text) + "</" + name.substr(0, name.find(' ')) + ">";
}

std::string count(std::size_t number, const std::string& what) {
  return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

/// Which of the levels is the nearest to the close; the end without any.
auto nearestOf(const std::vector<ReportedLevel>& levels) {
  const auto away = [](const ReportedLevel& level) {
    return std::abs(readLeadingNumber(level.distance));
  };
  return std::min_element(levels.begin(), levels.end(),
                          [&](const auto& a, const auto& b) { return away(a) < away(b); });
}

std::string row(const std::string& header, const std::string& value, const std::string& distance,
                const std::string& look) {
  return "<tr" + look + "><th scope=\"row\">" + header + "</th>" + tag("td", value) +
         tag("td", distance.empty() ? "" : distance + " %") + "</tr>\n";
}

bool isDaily(const Report& report) { return report.interval == "Daily"; }

std::string heading(const Report& report) {
  return report.ticker + (isDaily(report) ? "" : " " + report.interval);
}

/// From the highest price down, the close at its place.
std::string table(const Report& report) {
  std::vector<ReportedLevel> levels = report.levels;
  const auto price = [](const ReportedLevel& level) { return readLeadingNumber(level.value); };
  std::stable_sort(levels.begin(), levels.end(),
                   [&](const auto& a, const auto& b) { return price(a) > price(b); });
  std::string text = "<table>" + tag("caption", "Levels of " + heading(report)) +
                     "<thead><tr><th scope=\"col\">Level</th><th scope=\"col\">Price</th>"
                     "<th scope=\"col\">From the close</th></tr></thead>\n<tbody>\n";
  const double close = readLeadingNumber(report.close);
  const std::string closeRow = row("Close", report.close, "", " class=\"close\"");
  const auto below = std::find_if(levels.begin(), levels.end(),
                                  [&](const auto& level) { return price(level) < close; });
  for (auto level = levels.begin(); level != levels.end(); ++level) {
    text += level == below ? closeRow : "";
    text += row(
        "<span class=\"" + level->set + "\"></span>" + htmlEscaped(level->set + " " + level->name),
        level->value, level->distance, "");
  }
  text += below == levels.end() ? closeRow : "";
  return text + "</tbody></table>\n";
}

std::string id(const Report& report) { return "line-" + std::to_string(report.line); }

std::string article(const Report& report) {
  std::string about = report.interval + (isDaily(report) ? ", " + report.span : "") + ". Close " +
                      report.close + " on " + report.date + ".";
  if (const auto nearest = nearestOf(report.levels); nearest != report.levels.end()) {
    about += " Nearest level: " + nearest->set + " " + nearest->kind + " " + nearest->name +
             " at " + nearest->value + ", " + nearest->distance + " %.";
  }
  const std::string picture = quotes::percentEncoded(report.picture);
  const std::string text = "<article id=\"" + id(report) + "\">\n" + tag("h2", heading(report)) +
                           "\n" + tag("p", about) + "\n<div class=\"chart\">\n<a href=\"" +
                           picture + "\"><img src=\"" + picture + "\" width=\"" +
                           std::to_string(report.width) + "\" height=\"" +
                           std::to_string(report.height) + "\" loading=\"lazy\" alt=\"" +
                           htmlEscaped(report.summary) + "\"></a>\n";
  return text + (report.levels.empty() ? "" : table(report)) + "</div>\n</article>\n";
}

std::string entry(const Report& report) {
  const auto nearest = nearestOf(report.levels);
  return "<li><a href=\"#" + id(report) + "\">" + htmlEscaped(heading(report)) + "</a>" +
         (nearest == report.levels.end()
              ? ""
              : " <span class=\"soft\">" + htmlEscaped(nearest->distance) + " %</span>") +
         "</li>\n";
}

std::string failure(const Report& report) {
  return tag("li", "Line " + std::to_string(report.line) + ", " +
                       (report.ticker.empty() ? "no ticker" : report.ticker) + ": " +
                       report.failure);
}

}  // namespace

std::string htmlEscaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += static_cast<unsigned char>(c) < ' ' ? "" : std::string(1, c);
    }
  }
  return escaped;
}

void writePage(const std::filesystem::path& path, const Reports& reports, quotes::Day today) {
  const std::vector<std::size_t> order = reports.nearestFirst();
  const auto isGood = [&](std::size_t piece) { return reports.at(piece).failure.empty(); };
  const auto good = std::partition_point(order.begin(), order.end(), isGood);
  const std::size_t failed = static_cast<std::size_t>(order.end() - good);
  const std::string title = "Charts of " + quotes::momentText(today, "%Y-%m-%d");
  NewFile file(path);
  file.write(
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
      tag("title", title) + "\n<style>" + kPageStyle + "</style>\n</head>\n<body>\n" +
      "<a class=\"skip\" href=\"#charts\">To the charts</a>\n<header>\n" + tag("h1", title) + "\n" +
      tag("p", count(order.size() - failed, "chart") + ", nearest to a level first" +
                   (failed == 0 ? "." : "; " + count(failed, "failure") + ".")) +
      "\n</header>\n<nav aria-label=\"Tickers\">\n<ul>\n");
  for (auto piece = order.begin(); piece != good; ++piece) {
    file.write(entry(reports.at(*piece)));
  }
  file.write("</ul>\n</nav>\n<main id=\"charts\">\n");
  for (auto piece = order.begin(); piece != good; ++piece) {
    file.write(article(reports.at(*piece)));
  }
  if (failed > 0) {
    file.write(
        "<section aria-labelledby=\"failures\">\n<h2 id=\"failures\">Without a chart</h2>\n"
        "<ul>\n");
    for (auto piece = good; piece != order.end(); ++piece) {
      file.write(failure(reports.at(*piece)) + "\n");
    }
    file.write("</ul>\n</section>\n");
  }
  file.write(
      "</main>\n<footer>\n" +
      tag("p", "Distances are in per cent of the close. Levels as Quintara calculates them.") +
      "\n</footer>\n</body>\n</html>\n");
  file.commit();
}

}  // namespace quintara::chartbook
