#pragma once

#include <array>
#include <cmath>

namespace quintara {

/// What stands for "MS Sans Serif", whatever font the desktop prefers: the first of these that is
/// installed, or else any sans font.
inline constexpr std::array<const char*, 4> kFormFontFamilies{"Liberation Sans", "Arimo", "Arial",
                                                              "Helvetica"};

/// Logical pixels at 96 to the inch: the layout has no room for a desktop's other idea of a point.
inline int formFontPixels(float points) { return static_cast<int>(std::lround(points * 96 / 72)); }

}  // namespace quintara
