#include "service/provider/provider.hpp"

#include <algorithm>
#include <utility>

#include "service/prices/json_rows.hpp"
#include "service/prices/price_file.hpp"
#include "service/provider/download.hpp"
#include "service/text/text.hpp"

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
    case 407:
      return text + ", the proxy wants a name and a password";
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

Day latestWeekday(Day day) {
  while (isWeekend(day)) {
    day -= std::chrono::days{1};
  }
  return day;
}

bool samePrices(const DailyBar& a, const DailyBar& b) {
  return a.open == b.open && a.high == b.high && a.low == b.low && a.close == b.close;
}

// Returns whether the quote is new enough to be used. One without a volume leaves that of the
// table.
bool merge(DailyBars& bars, DailyBar quote) {
  if (quote.date < bars.back().date) {
    return false;
  }
  if (bars.back().date == quote.date) {
    quote.volume = quote.volume > 0 ? quote.volume : bars.back().volume;
    bars.pop_back();
  }
  bars.push_back(quote);
  return true;
}

// The beginning of a message about one of the two replies.
std::string aboutPart(const std::string& host, const Filling& filling, const std::string& part) {
  return escaped(host) + ": " + escaped(filling.at("symbol")) + ": " + part + ": ";
}

void hideKey(PriceRows& rows, const Secret& key) {
  rows.problem = key.hiddenIn(rows.problem);
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

// Behind our words the beginning of what came from outside.
std::string Provider::withExcerpt(const std::string& what, std::string_view outside) const {
  const auto excerpt = excerptOf(outside, settings_.key);
  return what + (excerpt.empty() ? "" : ": " + excerpt);
}

PriceRows Provider::read(const Part& part, const std::string& body, const Filling& filling) const {
  const std::lock_guard lock(reading_);
  PriceRows rows;
  if (part.shape.format == ReplyShape::Format::Json) {
    rows = parseJsonRows(body, filled(part.shape.rows, forPointer(filling), false), part.rules);
  } else {
    PriceFile file = parsePriceFile(body, part.rules);
    rows = std::move(static_cast<PriceRows&>(file));  // how it was read is for files to say
  }
  hideKey(rows, settings_.key);
  return rows;
}

Provider::Rows Provider::fetch(const Part& part, const Filling& filling, Deadline deadline) const {
  const Download reply = download(
      {part.url.filledWith(filling), filled(settings_.header, filling, false), settings_.caFile},
      deadline, stop_);
  const auto failed = [&](const std::string& what, std::string_view outside) {
    // Where a redirect leads is from outside, too.
    const bool redirected = reply.host != part.url.host();
    const auto host = redirected ? settings_.key.hiddenIn(reply.host) : reply.host;
    return Failed{aboutPart(host, filling, part.name) + withExcerpt(what, outside)};
  };
  if (!reply.problem.empty()) {
    return failed(reply.problem, reply.detail);
  }
  const bool saysUnknown = !settings_.unknownSymbol.empty() &&
                           reply.body.find(settings_.unknownSymbol) != std::string::npos;
  if (saysUnknown || reply.status == 404) {
    return NotFound{withExcerpt(statusText(reply.status), reply.body)};
  }
  if (reply.status / 100 != 2) {
    return failed(statusText(reply.status), reply.body);
  }
  if (isBlank(reply.body)) {
    return NotFound{"an empty reply"};
  }
  PriceRows rows = read(part, reply.body, filling);
  if (!rows.readable) {
    return failed("not prices, " + rows.problem, reply.body);
  }
  if (rows.isEmpty()) {
    return NotFound{withExcerpt("an empty table", reply.body)};
  }
  return rows;
}

void Provider::addQuote(ProviderReply& reply, const Filling& filling, Day today,
                        Deadline deadline) const {
  auto& bars = std::get<DailyBars>(reply.found);
  const auto undated = [newest = bars.back(), weekday = latestWeekday(today)](const DailyBar& bar) {
    return samePrices(bar, newest) ? newest.date : weekday;
  };
  const RowRules rules{settings_.quote.names, settings_.days, undated, "", DayOrder::Unclear};
  Rows rows = fetch({"quote", *settings_.quoteUrl, settings_.quote, rules}, filling, deadline);
  if (auto* quote = std::get_if<PriceRows>(&rows)) {
    reply.quote = std::move(*quote);
    if (!reply.quote->bars.empty() && !merge(bars, reply.quote->bars.back())) {
      reply.noQuote = "older than the table, not used";
    }
  } else if (const auto* unknown = std::get_if<NotFound>(&rows)) {
    reply.noQuote = "none, " + unknown->reason;
  } else {
    reply.found = std::get<Failed>(std::move(rows));
  }
}

ProviderReply Provider::ask(const std::string& ticker, Day today, Deadline deadline) const {
  ProviderReply reply;
  if (ticker == ".") {
    reply.found = NotFound{"in an address it would be no name but a folder"};
    return reply;
  }
  const Filling filling = fillingFor(ticker, today);
  const RowRules rules{settings_.table.names, settings_.days, nullptr, "", DayOrder::Unclear};
  Rows rows = fetch({"table", *settings_.tableUrl, settings_.table, rules}, filling, deadline);
  auto* table = std::get_if<PriceRows>(&rows);
  if (table == nullptr) {
    auto* failed = std::get_if<Failed>(&rows);
    reply.found = failed != nullptr ? Found(std::move(*failed)) : std::get<NotFound>(rows);
    return reply;
  }
  reply.table = std::move(*table);
  if (reply.table.bars.empty()) {
    reply.found = Failed{aboutPart(host(), filling, "table") + reply.table.problem};
    return reply;
  }
  reply.found = reply.table.bars;
  if (settings_.quoteUrl) {
    addQuote(reply, filling, today, deadline);
  }
  return reply;
}

}  // namespace quintara::quotes
