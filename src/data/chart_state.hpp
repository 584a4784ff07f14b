#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "data/candle_series.hpp"

namespace quintara {

/// The main window's variables that its subsystems share. All start at zero, empty or nothing.
struct ChartState {
  std::string sTicker;          ///< as typed
  std::string sDrawnTicker;     ///< whose bars are drawn; sTicker may be of a download that failed
  std::int16_t iDuration = 0;   ///< span box: 0 "6 months" to 3 "24 months"
  std::int16_t iInterval = 0;   ///< 0 daily, 1 weekly, 2 monthly
  std::int16_t iChartType = 0;  ///< 0 candlesticks, 1 line, 2 bars
  std::int16_t iSpacing = 0;    ///< pixels between neighbouring bars, 1 to 5
  bool bSuppressed = false;     ///< the spacing was brought down to 1
  float sngLeft = 0;            ///< position for the next bar laid out
  std::int16_t iShown = 0;      ///< bars drawn: items 1 to iShown

  /// Row 0 is the current quote, then the table's rows, newest first; fields joined by "@".
  std::vector<std::string> sRows;
  std::optional<CandleSeries> colCandles;  ///< absent until the first Draw Chart
  Candle objCandle;                        ///< the bar built last

  float sngMax = 0;  ///< price range of the chart
  float sngMin = 0;
  float sngShownMax = 0;  ///< price range of the shown bars alone
  float sngShownMin = 0;
  float sngPricePerPixel = 0;
  bool bDrawing = false;  ///< a drawing is in progress, or one failed
  bool bBusy = false;     ///< Draw Chart's guard; nothing sets it

  /// Whether enough rows are loaded for a chart: the quote, two of the table, and the empty one
  /// behind the table's last line feed.
  [[nodiscard]] bool hasChart() const { return sRows.size() > 3; }

  /// The series. Throws ObjectNotSet before the first Draw Chart.
  [[nodiscard]] CandleSeries& candles() {
    if (!colCandles) {
      throw RuntimeError(ErrorKind::ObjectNotSet);
    }
    return *colCandles;
  }
  [[nodiscard]] const CandleSeries& candles() const {
    return const_cast<ChartState*>(this)->candles();
  }
};

}  // namespace quintara
