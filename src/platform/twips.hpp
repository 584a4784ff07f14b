#pragma once

#include <algorithm>
#include <cmath>

namespace quintara {

/// Places and sizes of windows and controls are in twips. A logical pixel has 15, on every display.
inline constexpr int kTwipsPerPixel = 15;

template <class Number>
constexpr float toTwips(Number pixels) {
  return static_cast<float>(pixels * kTwipsPerPixel);
}

/// The nearest logical pixel, within what a control can take; 0 for what is not a number.
inline int toPixels(float twips) {
  constexpr float kLimit = 1 << 20;
  if (std::isnan(twips)) {
    return 0;
  }
  return static_cast<int>(std::lround(std::clamp(twips / kTwipsPerPixel, -kLimit, kLimit)));
}

}  // namespace quintara
