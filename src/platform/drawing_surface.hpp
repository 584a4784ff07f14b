#pragma once

#include <cstdint>
#include <string_view>

#include "platform/colour.hpp"

namespace quintara {

enum class BoxMode { None, Outline, Filled };  ///< Line's box modes: none, B and BF
enum class DrawStyle { Solid = 0, Dash = 1, Dot = 2 };

/// The drawing half of a picture box: a retained image with a user coordinate system.
///
/// Until Scale is called, coordinates are logical pixels with the origin at the top-left corner.
/// All coordinates are in the scale in force; what lies outside the image is clipped, and a
/// coordinate that is not a number draws nothing. A scale of zero width or height maps every
/// position to one column or row.
class DrawingSurface {
 public:
  DrawingSurface() = default;
  DrawingSurface(const DrawingSurface&) = delete;
  DrawingSurface& operator=(const DrawingSurface&) = delete;
  virtual ~DrawingSurface() = default;

  /// Clears the image to the background colour; CurrentX and CurrentY go to 0. The scale stays.
  virtual void Cls() = 0;
  /// ScaleMode = 3: coordinates in logical pixels, origin at the top-left corner.
  virtual void setScaleModePixels() = 0;
  /// The top-left corner becomes (x1, y1), the bottom-right corner (x2, y2).
  virtual void Scale(float x1, float y1, float x2, float y2) = 0;
  /// Signed width of the area in the scale in force. The unit size survives a resize: after
  /// Scale (W, ..)-(0, ..) it reads minus the current width in logical pixels.
  [[nodiscard]] virtual float ScaleWidth() const = 0;
  [[nodiscard]] virtual float ScaleHeight() const = 0;

  /// A line one logical pixel wide, both ends included, in the current DrawStyle; or the outline
  /// of, or the filled, rectangle with these corners. A box of zero height or width is a stroke.
  virtual void Line(float x1, float y1, float x2, float y2, Colour colour,
                    BoxMode box = BoxMode::None) = 0;
  virtual void setDrawStyle(DrawStyle style) = 0;

  /// Where the next Print puts the top-left corner of its text, in the scale in force.
  virtual void setCurrentX(float x) = 0;
  virtual void setCurrentY(float y) = 0;
  /// Draws UTF-8 text rightwards from (CurrentX, CurrentY) in the foreground colour, then moves
  /// CurrentX to 0 and CurrentY below the text.
  virtual void Print(std::string_view text) = 0;
};

}  // namespace quintara
