#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "service/prices/moments.hpp"

namespace quintara::quotes {

/// What all dates of a table together say about their order.
struct OrderFound {
  DayOrder order = DayOrder::Unclear;
  std::string why;      ///< one line, escaped
  std::string problem;  ///< why there is no order though one is needed; empty otherwise
};

std::string nameOf(DayOrder order);

/// Collects what decides whether 11/05 is in May or in November: numbers above 12, dates that come
/// in order, days on which no exchange trades.
class OrderEvidence {
 public:
  void add(std::size_t line, std::string_view text, const WrittenMoment& moment);

  /// `region` is the order of the desktop's regional settings, used where nothing else decides.
  OrderFound decide(DayOrder region) const;

 private:
  struct Reading {
    explicit Reading(DayOrder one) : order(one) {}

    DayOrder order;
    std::size_t valid = 0;
    std::size_t weekends = 0;
    bool rising = true;
    bool falling = true;
    Day last{};
    std::size_t otherLine = 0;  ///< of the first date that cannot be of this order
    std::string otherText;
    long steps = 0;  ///< the days from date to date
  };

  std::array<Reading, 3> readings_{Reading{DayOrder::DayFirst}, Reading{DayOrder::MonthFirst},
                                   Reading{DayOrder::YearFirst}};
  std::size_t count_ = 0;
  std::size_t firstLine_ = 0;
  std::string firstText_;
  bool points_ = true;
  bool differ_ = false;
};

}  // namespace quintara::quotes
