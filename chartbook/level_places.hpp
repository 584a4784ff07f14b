#pragma once

#include <string>
#include <vector>

namespace quintara::chartbook {

/// Where a level stands in the calculator, as the window's layout names it.
struct LevelPlace {
  std::string set;      ///< A1 to A4
  std::string kind;     ///< retracement or target
  std::string name;     ///< 38.2%, 50%, 61.8%, 1:1, 1.382 or 1.618
  std::string label;    ///< the control that shows its value
  std::string showBox;  ///< the box that shows the set
  std::string box;      ///< the box that shows this target; empty for a retracement
};

/// All 24, in the order of the layout.
const std::vector<LevelPlace>& levelPlaces();

}  // namespace quintara::chartbook
