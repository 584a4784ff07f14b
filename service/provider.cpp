#include "service/provider.hpp"

#include <algorithm>
#include <utility>

#include "service/download.hpp"
#include "service/json_rows.hpp"
#include "service/price_file.hpp"
#include "service/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kExcerpt = 200;

// The beginning of a reply as one line.
std::string excerptOf(std::string_view body, const Secret& key) {
  std::string line;
  for (const char c : body) {
    const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    if (!blank) {
      line += c;
    } else if (!line.empty() && line.back() != ' ') {
      line += ' ';
    }
  }
  const std::string shown = key.hiddenIn(line, kExcerpt + 1);
  return escaped(shown.size() > kExcerpt ? shown.substr(0, kExcerpt) + "..." : shown);
}

std::string statusText(long status) {
  std::string text = "HTTP status " + std::to_string(status);
  switch (status) {
    case 401:
    case 402:
    case 403:
      return text + ", the key or the plan does not allow this";
    case 429:
      return text + ", too many requests or a quota used up";
    default:
      return text;
  }
}

bool isBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// In a pointer into JSON, ~ and / of a name are written ~0 and ~1.
Filling forPointer(const Filling& filling) {
  Filling result;
  for (const auto& [name, value] : filling) {
    for (const char c : value) {
      result[name] += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
    }
  }
  return result;
}

void merge(DailyBars& bars, const DailyBar& quote) {
  if (bars.back().date < quote.date) {
    bars.push_back(quote);
  } else if (bars.back().date == quote.date) {
    bars.back() = quote;
  }
}

void hideKey(PriceRows& rows, const Secret& key) {
  for (std::string& complaint : rows.complaints) {
    complaint = key.hiddenIn(complaint);
  }
}

}  // namespace

Provider::Provider(ProviderSettings settings, std::stop_token stop)
    : settings_(std::move(settings)), stop_(std::move(stop)) {}

Filling Provider::fillingFor(const std::string& ticker, Day today) const {
  const std::chrono::year_month_day date{today};
  const auto year = date.year() - std::chrono::years{settings_.years};
  const Day first{year / date.month() / std::min(date.day(), std::chrono::day{28})};
  const auto lastSecond = today + std::chrono::days{1} - std::chrono::seconds{1};
  return {{"symbol", ticker},
          {"symbol_lower", lowerCase(ticker)},
          {"from", momentText(first, settings_.datePattern)},
          {"to", momentText(lastSecond, settings_.datePattern)},
          {"interval", settings_.interval},
          {"key", settings_.key.value()}};
}

std::string Provider::failure(const std::string& host, const std::string& what,
                              const std::string& body) const {
  const auto excerpt = excerptOf(body, settings_.key);
  return settings_.key.hiddenIn(escaped(host) + ": " + what +
                                (excerpt.empty() ? "" : ": " + excerpt));
}

Provider::Rows Provider::read(const std::string& host, const std::string& body,
                              const ReplyShape& shape, const RowRules& rules,
                              const Filling& filling) const {
  const bool json = shape.format == ReplyShape::Format::Json;
  PriceRows rows = json ? parseJsonRows(body, filled(shape.rows, forPointer(filling), false), rules)
                        : parsePriceFile(body, rules);
  if (!rows.readable) {
    return Failed{failure(host, "not prices, " + rows.problem, body)};
  }
  hideKey(rows, settings_.key);
  return rows;
}

Provider::Rows Provider::fetch(const UrlTemplate& url, const ReplyShape& shape,
                               const RowRules& rules, const Filling& filling,
                               Deadline deadline) const {
  const Download reply = download(
      {url.filledWith(filling), filled(settings_.header, filling, false), settings_.caFile},
      deadline, stop_);
  if (!reply.problem.empty()) {
    return Failed{failure(url.host(), reply.problem, {})};
  }
  const bool saysUnknown = !settings_.unknownSymbol.empty() &&
                           reply.body.find(settings_.unknownSymbol) != std::string::npos;
  if (saysUnknown || reply.status == 404 || (reply.status / 100 == 2 && isBlank(reply.body))) {
    return NotFound{};
  }
  if (reply.status / 100 != 2) {
    return Failed{failure(url.host(), statusText(reply.status), reply.body)};
  }
  return read(url.host(), reply.body, shape, rules, filling);
}

void Provider::addQuote(ProviderReply& reply, const Filling& filling, Day today,
                        Deadline deadline) const {
  const auto readDay = [this](std::string_view text) { return parseAnyDay(text, settings_.days); };
  Day undated = today;
  while (isWeekend(undated)) {
    undated -= std::chrono::days{1};
  }
  const RowRules rules{settings_.quote.names, readDay, undated};
  Rows rows = fetch(*settings_.quoteUrl, settings_.quote, rules, filling, deadline);
  if (auto* failed = std::get_if<Failed>(&rows)) {
    reply.found = std::move(*failed);
  }
  if (auto* quote = std::get_if<PriceRows>(&rows)) {
    reply.quote = std::move(*quote);
    if (!reply.quote->bars.empty()) {
      merge(std::get<DailyBars>(reply.found), reply.quote->bars.back());
    }
  }
}

ProviderReply Provider::ask(const std::string& ticker, Day today) const {
  if (ticker == ".") {
    return {NotFound{}, {}, std::nullopt};  // in an address it would be no name but a folder
  }
  const Deadline deadline = std::chrono::steady_clock::now() + settings_.timeOut;
  const Filling filling = fillingFor(ticker, today);
  const auto readDay = [this](std::string_view text) { return parseAnyDay(text, settings_.days); };
  const RowRules rules{settings_.table.names, readDay, std::nullopt};
  Rows rows = fetch(*settings_.tableUrl, settings_.table, rules, filling, deadline);
  ProviderReply reply{NotFound{}, {}, std::nullopt};
  if (auto* failed = std::get_if<Failed>(&rows)) {
    reply.found = std::move(*failed);
  }
  auto* table = std::get_if<PriceRows>(&rows);
  if (table == nullptr) {
    return reply;
  }
  reply.table = std::move(*table);
  if (!reply.table.bars.empty()) {
    reply.found = reply.table.bars;
  } else if (reply.table.badLines > 0) {
    reply.found =
        Failed{failure(host(), reply.table.problem + ", " + reply.table.complaints.front(), {})};
  }
  if (settings_.quoteUrl && !reply.table.bars.empty()) {
    addQuote(reply, filling, today, deadline);
  }
  return reply;
}

}  // namespace quintara::quotes
