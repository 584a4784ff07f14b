#include "data/initialize_collection.hpp"

#include <algorithm>

#include "data/bar_positions.hpp"
#include "data/rows.hpp"

namespace quintara {

namespace {

void SetValues(Candle& candle, float Left, float dOpen, float dHigh, float dLow, float dClose,
               float dVolume, std::string_view sDate) {
  candle.dOpen = dOpen;
  candle.dHigh = dHigh;
  candle.dLow = dLow;
  candle.dClose = dClose;
  candle.Left = Left;
  candle.dVolume = dVolume;
  candle.sDate = sDate;
}

void appendCandle(ChartState& state, BarPositions& positions, std::string_view row) {
  const RowFields fields(row);
  const float volume = fields.number(kVolume);
  const float close = fields.number(kClose);
  const float low = fields.number(kLow);
  const float high = fields.number(kHigh);
  const float open = fields.number(kOpen);
  SetValues(state.objCandle, positions.take(), open, high, low, close, volume, fields.text(kDate));
  state.colCandles->Add(state.objCandle);
}

}  // namespace

void InitializeCollection(ChartState& state, Date today) {
  state.colCandles.emplace();
  constexpr std::size_t kUsualRows = 10'000;  // a reply of empty lines is not worth the memory
  state.colCandles->reserve(std::min(state.sRows.size(), kUsualRows));
  BarPositions positions(state);
  for (std::size_t i = firstBarRow(state, today); i + 1 < state.sRows.size(); ++i) {
    appendCandle(state, positions, state.sRows[i]);
  }
}

}  // namespace quintara
