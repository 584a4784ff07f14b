#pragma once

#include <optional>
#include <vector>

#include "platform/controls.hpp"
#include "platform/raster.hpp"

class QKeyEvent;

namespace quintara {

/// The pointer that the keyboard moves over a picture: from stop to stop, and up and down by
/// pixels. It knows places only; whoever owns it raises the events of a mouse there.
class KeyboardPointer {
 public:
  struct Step {
    int stops = 0;   ///< towards the last one
    int pixels = 0;  ///< downwards, logical
  };
  /// The step that a key stands for, if any.
  static std::optional<Step> stepOf(const QKeyEvent& key);

  /// Goes a step, among the stops that lie within the picture. The first step, and one from where
  /// nothing is seen any more, leads to the first stop, and further only if it is one to the last.
  /// False without a stop to go to.
  bool go(Step step, const std::vector<PointerStop>& stops, const Raster& raster);
  /// Where it stands, in user coordinates, while it is in use.
  [[nodiscard]] const std::optional<PointerStop>& at() const { return at_; }
  void end() { at_.reset(); }

 private:
  std::optional<PointerStop> at_;
};

}  // namespace quintara
