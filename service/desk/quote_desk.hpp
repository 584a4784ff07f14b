#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "service/prices/calendar.hpp"
#include "service/sources/price_source.hpp"

namespace quintara::quotes {

/// In the order they are asked; the first that knows the ticker answers.
using PriceSources = std::vector<std::unique_ptr<PriceSource>>;

/// Answers requests, given as their raw targets, with reply bodies. Knows nothing of HTTP but the
/// targets and the status in a Refusal, which both functions throw. May be used by several threads.
class QuoteDesk {
 public:
  /// Hears why a table has no row although there are prices.
  using Remark = std::function<void(const std::string& why)>;

  QuoteDesk(
      PriceSources sources, Today today, Remark remark = [](const std::string&) {});

  /// A bar of today is not in a daily table: it is the quote, which the reader puts in front of the
  /// table. It does count in the week and month under way. A week or month is in the table when its
  /// first trading day is within the dates asked for, so that no bar is cut at its beginning.
  std::string table(std::string_view target) const;
  std::string quote(std::string_view target) const;

 private:
  /// Never without a bar.
  DailyBars barsOf(const std::string& ticker, Day today) const;

  PriceSources sources_;
  Today today_;
  Remark remark_;
};

}  // namespace quintara::quotes
