#pragma once

#include <cstdint>
#include <string_view>

#include "service/prices/price.hpp"

namespace quintara::quotes {

/// How a ticker of the demonstration market moves. Everything that moves prices is counted in
/// millionths of the natural logarithm of the price: 10'000 is about one per cent.
struct Character {
  std::string_view ticker;
  std::uint64_t seed;
  std::int64_t start;         ///< log of the price, in ten-thousandths, on the first day
  std::int64_t trendPerYear;  ///< where the price drifts to in the long run
  std::int64_t swing;         ///< height of the waves around the trend
  std::int64_t swingDays;     ///< length of the longer wave
  std::int64_t shock;         ///< largest ordinary move from one close to the next
  std::int64_t bound;         ///< how far chance may carry the price from its waves
  std::int64_t volume;        ///< of an ordinary day
};

/// One ticker's way through the weekdays since the first one. Integers only: a bar is the same on
/// every machine and every day it is asked for, and the price cannot leave its trend by more than
/// the waves and the bound, however many decades pass.
class DemoWalk {
 public:
  explicit DemoWalk(const Character& character);

  /// Goes on by one weekday. The bar carries no date.
  DailyBar next();
  /// The same without making up the bar, for the days before the ones wanted.
  void skip();

 private:
  std::int64_t chance(std::int64_t size, std::uint64_t purpose) const;
  std::int64_t logClose() const;

  const Character& character_;
  std::int64_t day_ = 0;
  std::int64_t wander_ = 0;
  std::int64_t logClose_;
};

}  // namespace quintara::quotes
