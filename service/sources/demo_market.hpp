#pragma once

#include "service/sources/price_source.hpp"

namespace quintara::quotes {

/// The market that is there without any prices of one's own: a few made-up tickers, one for each
/// kind of chart, traded on every weekday from 2000 to 2099. A price depends on ticker and date
/// alone. The bars found are those of the eleven years up to `today`.
class DemoMarket : public PriceSource {
 public:
  std::string name() const override { return "the demonstration market"; }
  Found find(const std::string& ticker, Day today) override;
};

}  // namespace quintara::quotes
