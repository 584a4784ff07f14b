#pragma once

#include <cstdint>

namespace quintara {

/// A colour as 0x00BBGGRR: red in the lowest byte.
struct Colour {
  std::uint32_t bgr = 0;

  friend constexpr bool operator==(Colour, Colour) = default;
};

/// The same colour as a pixel of an RGB32 image, 0xFFRRGGBB.
constexpr std::uint32_t toRgb32(Colour colour) {
  return 0xFF000000U | (colour.bgr & 0xFFU) << 16U | (colour.bgr & 0xFF00U) |
         (colour.bgr >> 16U & 0xFFU);
}

/// The colour of an RGB32 pixel; the unused byte is dropped.
constexpr Colour fromRgb32(std::uint32_t pixel) {
  return {(pixel & 0xFFU) << 16U | (pixel & 0xFF00U) | (pixel >> 16U & 0xFFU)};
}

}  // namespace quintara
