#include "service/desk/quote_desk.hpp"

#include <algorithm>
#include <utility>

#include "service/desk/replies.hpp"
#include "service/desk/request.hpp"
#include "service/prices/bars.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {

QuoteDesk::QuoteDesk(PriceSources sources, Today today, Remark remark)
    : sources_(std::move(sources)), today_(std::move(today)), remark_(std::move(remark)) {}

std::string QuoteDesk::table(std::string_view target) const {
  const TableRequest request = parseTableRequest(target);
  const Day today = today_();
  const bool daily = request.interval == Interval::Daily;
  const Day latest = daily ? today - std::chrono::days{1} : today;
  const Day last = std::min(request.last, latest);
  DailyBars bars = barsOf(request.ticker, today);
  const std::string all = spanText(bars);
  cutAfter(bars, last);
  if (bars.empty() || bars.back().date < request.first) {
    remark_(escaped(request.ticker) + " has " + all + ", but none within " +
            tableDate(request.first) + " to " + tableDate(last));
  }
  return tableText(aggregated(bars, request.interval), request.first);
}

std::string QuoteDesk::quote(std::string_view target) const {
  const std::string ticker = parseQuoteRequest(target);
  const Day today = today_();
  DailyBars bars = barsOf(ticker, today);
  cutAfter(bars, today);
  if (bars.empty()) {
    throw Refusal(404, "no prices for " + escaped(ticker) + " until today");
  }
  return quoteText(ticker, bars, today);
}

DailyBars QuoteDesk::barsOf(const std::string& ticker, Day today) const {
  std::string reason;  // the last that a source gave for not knowing the ticker
  for (const auto& source : sources_) {
    Found found = source->find(ticker, today);
    if (const auto* unusable = std::get_if<Unusable>(&found)) {
      throw Refusal(404, unusable->reason);
    }
    if (const auto* failed = std::get_if<Failed>(&found)) {
      throw Refusal(502, failed->reason);
    }
    if (auto* bars = std::get_if<DailyBars>(&found)) {
      return std::move(*bars);
    }
    if (const std::string& why = std::get<NotFound>(found).reason; !why.empty()) {
      reason = ": " + why;
    }
  }
  throw Refusal(404, "no prices for " + escaped(ticker) + reason);
}

}  // namespace quintara::quotes
