#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>

#include "service/provider/provider_settings.hpp"
#include "service/sources/price_source.hpp"

namespace quintara::quotes {

/// What the provider had to say about one ticker. Nothing in it shows the key.
struct ProviderReply {
  Found found;
  PriceRows table;
  std::optional<PriceRows> quote;  ///< if one was asked for and came
  std::string noQuote;             ///< why the one that was asked for is not used
};

/// Asks the provider on the network, each time anew. May be used by several threads.
class Provider {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  Provider(ProviderSettings settings, std::stop_token stop);

  /// The daily table, and on top of it the quote. A quote without a date is that of the latest
  /// weekday, unless it repeats the four prices of the newest row: then it is that row, as before
  /// the market opens. One without usable prices, as before the day's first trade, is left out, and
  /// so is one that the provider does not know. A quote that cannot be had fails the whole: a chart
  /// without it would pass for one of today.
  ProviderReply ask(const std::string& ticker, Day today, Deadline deadline) const;
  /// The end of the time limit for what is asked now.
  Deadline deadline() const { return std::chrono::steady_clock::now() + settings_.timeOut; }

  const ProviderSettings& settings() const { return settings_; }
  const std::string& host() const { return settings_.tableUrl->host(); }

 private:
  using Rows = std::variant<PriceRows, NotFound, Failed>;

  /// One of the two that are asked for.
  struct Part {
    std::string name;  ///< in messages
    const UrlTemplate& url;
    const ReplyShape& shape;
    const RowRules& rules;
  };

  Rows fetch(const Part& part, const Filling& filling, Deadline deadline) const;
  PriceRows read(const Part& part, const std::string& body, const Filling& filling) const;
  void addQuote(ProviderReply& reply, const Filling& filling, Day today, Deadline deadline) const;
  Filling fillingFor(const std::string& ticker, Day today) const;
  std::string withExcerpt(const std::string& what, std::string_view outside) const;

  const ProviderSettings settings_;
  const std::stop_token stop_;
  mutable std::mutex reading_;  ///< one reply after the other: a large one takes much memory
};

}  // namespace quintara::quotes
