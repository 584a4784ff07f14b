#include "service/provider/provider_source.hpp"

#include <algorithm>
#include <ostream>
#include <utility>

#include "service/prices/report.hpp"
#include "service/system/counted.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kMostEntries = 32;
constexpr int kTransfers = 4;  // at the same time; each may hold a large reply in memory
constexpr std::chrono::seconds kFailureTime{5};
constexpr auto kTooMany = "too many requests wait for its answers already";

}  // namespace

ProviderSource::ProviderSource(ProviderSettings settings, Log log, std::stop_token stop)
    : provider_(std::move(settings), std::move(stop)), log_(std::move(log)) {
  const ProviderSettings& checked = provider_.settings();
  log_.info("prices from " + escaped(provider_.host()));
  const bool keyInUrl =
      checked.tableUrl->names("key") || (checked.quoteUrl && checked.quoteUrl->names("key"));
  const bool secure =
      checked.tableUrl->secure() && (!checked.quoteUrl || checked.quoteUrl->secure());
  if (!secure && (keyInUrl || !checked.header.empty())) {
    log_.warning("the key travels unencrypted; use https if the provider has it");
  }
}

std::string ProviderSource::name() const { return "the provider at " + escaped(provider_.host()); }

Found ProviderSource::explain(const std::string& ticker, Day today, std::ostream& out) {
  ProviderReply reply = provider_.ask(ticker, today, provider_.deadline());
  if (!reply.table.isEmpty()) {
    out << "  Table\n";
    reportRows(reply.table, out);
  }
  if (reply.quote) {
    out << "  Quote\n";
    reportRows(*reply.quote, out);
  }
  if (!reply.noQuote.empty()) {
    out << "  Quote: " << reply.noQuote << "\n";
  }
  return std::move(reply.found);
}

Found ProviderSource::find(const std::string& ticker, Day today) {
  const auto deadline = provider_.deadline();
  const Counted request(waiting_);
  std::promise<Found> promise;
  std::unique_lock lock(mutex_);
  const auto known = entries_.find(ticker);
  if (known != entries_.end() && known->second.today == today &&
      Clock::now() < known->second.until) {
    const auto found = known->second.found;
    const bool awaited = known->second.until == Clock::time_point::max();
    lock.unlock();
    return awaited && request.number > kMostAtOnce ? failed(kTooMany) : found.get();
  }
  if (request.number > kMostAtOnce) {
    return failed(kTooMany);
  }
  makeRoom();
  const std::size_t number = ++asked_;
  entries_[ticker] = {promise.get_future().share(), today, Clock::time_point::max(), number};
  lock.unlock();
  Found found = Failed{"the service failed; its log says why"};
  try {
    found = ask(ticker, today, deadline);
  } catch (const std::exception& error) {
    log_.error(escaped(error.what()));
  }
  // First the time, then the answer: should handing it on fail, the entry ends all the same.
  lock.lock();
  const auto entry = entries_.find(ticker);
  if (entry != entries_.end() && entry->second.number == number) {
    const auto time = provider_.settings().cacheTime;
    entry->second.until =
        Clock::now() +
        (std::holds_alternative<Failed>(found) ? std::min(time, kFailureTime) : time);
  }
  lock.unlock();
  promise.set_value(found);
  return found;
}

// The one that would be forgotten first makes room; whoever waits for it holds it still.
void ProviderSource::makeRoom() {
  const auto sooner = [](const auto& a, const auto& b) { return a.second.until < b.second.until; };
  if (entries_.size() >= kMostEntries) {
    entries_.erase(std::min_element(entries_.begin(), entries_.end(), sooner));
  }
}

Found ProviderSource::ask(const std::string& ticker, Day today, Clock::time_point deadline) {
  std::unique_lock lock(mutex_);
  if (!freed_.wait_until(lock, deadline, [this] { return transfers_ < kTransfers; })) {
    return failed("no transfer ended in time for another");
  }
  ++transfers_;
  lock.unlock();
  const struct Release {
    ProviderSource& source;
    ~Release() {
      {
        const std::lock_guard again(source.mutex_);
        --source.transfers_;
      }
      source.freed_.notify_one();
    }
  } release{*this};
  ProviderReply reply = provider_.ask(ticker, today, deadline);
  report(ticker, reply);
  return std::move(reply.found);
}

Found ProviderSource::failed(const std::string& reason) const {
  const std::string text = escaped(provider_.host()) + ": " + reason;
  log_.warning(text);
  return Failed{text};
}

void ProviderSource::report(const std::string& ticker, const ProviderReply& reply) const {
  const std::string who = escaped(provider_.host()) + ": " + escaped(ticker);
  if (const auto* failed = std::get_if<Failed>(&reply.found)) {
    log_.warning(failed->reason);
    return;
  }
  if (const auto* unknown = std::get_if<NotFound>(&reply.found)) {
    log_.info(who + " is not known there, " + unknown->reason);
  }
  if (reply.table.badLines > 0) {
    log_.warning(who + ": bad rows left out: " + std::to_string(reply.table.badLines) +
                 ", the first in " + reply.table.complaints.front());
  }
  if (reply.quote && reply.quote->badLines > 0) {
    log_.warning(who + ": the quote is left out, " + reply.quote->complaints.front());
  }
  if (!reply.noQuote.empty()) {
    log_.warning(who + ": quote: " + reply.noQuote);
  }
}

}  // namespace quintara::quotes
