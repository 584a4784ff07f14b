#include "service/provider/provider_source.hpp"

#include <algorithm>
#include <utility>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kMostEntries = 32;
constexpr int kTransfers = 4;  // at the same time; each may hold a large reply in memory
constexpr std::chrono::seconds kFailureTime{5};

}  // namespace

ProviderSource::ProviderSource(ProviderSettings settings, Log log, std::stop_token stop)
    : provider_(std::move(settings), std::move(stop)),
      log_(std::move(log)),
      transfers_(kTransfers) {
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

Found ProviderSource::find(const std::string& ticker, Day today) {
  std::promise<Found> promise;
  std::unique_lock lock(mutex_);
  const auto known = entries_.find(ticker);
  if (known != entries_.end() && known->second.today == today &&
      Clock::now() < known->second.until) {
    const auto found = known->second.found;
    lock.unlock();
    return found.get();
  }
  makeRoom();
  const std::size_t number = ++asked_;
  entries_[ticker] = {promise.get_future().share(), today, Clock::time_point::max(), number};
  lock.unlock();
  Found found = Failed{"the service failed; its log says why"};
  try {
    found = ask(ticker, today);
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

Found ProviderSource::ask(const std::string& ticker, Day today) {
  transfers_.acquire();
  struct Release {
    std::counting_semaphore<>& transfers;
    ~Release() { transfers.release(); }
  } const release{transfers_};
  ProviderReply reply = provider_.ask(ticker, today);
  report(ticker, reply);
  return std::move(reply.found);
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
