#pragma once

#include <cstddef>
#include <vector>

#include "data/candle.hpp"
#include "values/errors.hpp"

namespace quintara {

/// The bars of a chart, newest first, addressed by position from 1.
class CandleSeries {
 public:
  void reserve(std::size_t count) { candles_.reserve(count); }
  void Add(Candle candle) { candles_.push_back(std::move(candle)); }
  [[nodiscard]] std::size_t Count() const { return candles_.size(); }

  /// Item 1 is the newest bar. Throws SubscriptOutOfRange outside 1 to Count.
  [[nodiscard]] const Candle& Item(std::size_t position) const {
    if (position < 1 || position > candles_.size()) {
      throw RuntimeError(ErrorKind::SubscriptOutOfRange);
    }
    return candles_[position - 1];
  }
  [[nodiscard]] Candle& Item(std::size_t position) {
    return const_cast<Candle&>(static_cast<const CandleSeries&>(*this).Item(position));
  }

 private:
  std::vector<Candle> candles_;
};

}  // namespace quintara
