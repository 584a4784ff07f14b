#pragma once

#include <algorithm>
#include <cmath>

namespace quintara {

constexpr int kTwipsPerPixel = 15;

/// The nearest logical pixel, within what a control can take; 0 for what is not a number.
inline int toPixels(float twips) {
  constexpr float kLimit = 1 << 20;
  if (std::isnan(twips)) {
    return 0;
  }
  return static_cast<int>(std::lround(std::clamp(twips / kTwipsPerPixel, -kLimit, kLimit)));
}

template <class Number>
float toTwips(Number pixels) {
  return static_cast<float>(pixels * kTwipsPerPixel);
}

}  // namespace quintara
