#pragma once

#include <string>

#include "platform/drawing_surface.hpp"

namespace quintara {

/// The colour of every candle, line and bar: green.
inline constexpr Colour kBarColour{0x0000FF00};

/// One price bar. Prices are single precision, their prefixes notwithstanding.
class Candle {
 public:
  float dOpen = 0;
  float dHigh = 0;
  float dLow = 0;
  float dClose = 0;
  float Left = 0;      ///< position in chart units: pixels from the chart's right edge
  double dVolume = 0;  ///< a single-precision value widened
  std::string sDate;   ///< as received, such as 14-Nov-02

  // Indicator values; kept in the record, filled by nothing yet.
  float d50day = 0;
  float d200day = 0;
  float MACDLine = 0;
  float SignalLine = 0;
  float MACDOs = 0;
  float FastD = 0;
  float SlowD = 0;

  /// Draws a candlestick, body two units wide: hollow when it closed at or above its open.
  void Draw(DrawingSurface& picChart) const;
  /// Draws an open-high-low-close bar: opening tick to the left, closing tick to the right.
  void DrawBar(DrawingSurface& picChart) const;
};

}  // namespace quintara
