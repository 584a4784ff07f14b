#pragma once

#include <chrono>
#include <optional>
#include <stop_token>
#include <string>

#include "service/price_source.hpp"
#include "service/provider_settings.hpp"

namespace quintara::quotes {

// What the provider had to say about one ticker. Nothing in it shows the key.
struct ProviderReply {
  Found found;
  PriceRows table;
  std::optional<PriceRows> quote;  // if one was asked for and came
};

// Asks the provider on the network, each time anew. May be used by several threads.
class Provider {
 public:
  Provider(ProviderSettings settings, std::stop_token stop);

  // The daily table, and on top of it the quote. A quote without a date is that of the latest
  // weekday; one without usable prices, as before the day's first trade, is left out. A quote that
  // cannot be had fails the whole: a chart without it would pass for one of today.
  ProviderReply ask(const std::string& ticker, Day today) const;

  const ProviderSettings& settings() const { return settings_; }
  const std::string& host() const { return settings_.tableUrl->host(); }

 private:
  using Deadline = std::chrono::steady_clock::time_point;
  using Rows = std::variant<PriceRows, NotFound, Failed>;

  Rows fetch(const UrlTemplate& url, const ReplyShape& shape, const RowRules& rules,
             const Filling& filling, Deadline deadline) const;
  Rows read(const std::string& host, const std::string& body, const ReplyShape& shape,
            const RowRules& rules, const Filling& filling) const;
  void addQuote(ProviderReply& reply, const Filling& filling, Day today, Deadline deadline) const;
  Filling fillingFor(const std::string& ticker, Day today) const;
  std::string failure(const std::string& host, const std::string& what,
                      const std::string& body) const;

  const ProviderSettings settings_;
  const std::stop_token stop_;
};

}  // namespace quintara::quotes
