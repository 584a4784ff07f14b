#pragma once

#include <string>

#include "platform/raster.hpp"

namespace quintara::chartbook {

/// The picture as a PNG file: with a palette, or in true colour if it has more than 256 colours.
/// Throws std::runtime_error when it cannot be encoded.
std::string pngOf(const Raster& raster);

}  // namespace quintara::chartbook
