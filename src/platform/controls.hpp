#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/colour.hpp"
#include "platform/drawing_surface.hpp"

namespace quintara {

/// A mouse event as a control sees it.
struct MouseEvent {
  std::int16_t Button = 0;  ///< 1 left, 2 right, 4 middle: all that are held for a move or a press,
                            ///< the one that was let go for a release
  std::int16_t Shift = 0;   ///< 1 shift, 2 control, 4 alt
  float X = 0;              ///< in the control's scale: twips, or a picture box's user coordinates
  float Y = 0;
};
using MouseHandler = std::function<void(const MouseEvent&)>;
using Handler = std::function<void()>;

/// What every control has. An event handler is a public member with the event's name; an empty one
/// is not called. A handler that code raises (by assigning Value, ListIndex or a size) runs at
/// once and its errors go to that code; what a user does comes through the event dispatcher.
class Control {
 public:
  Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  /// The pointer moved over the control's own area (not over a control inside it).
  MouseHandler MouseMove;
};

class Label : public Control {
 public:
  [[nodiscard]] virtual std::string Caption() const = 0;
  virtual void setCaption(std::string_view text) = 0;
  [[nodiscard]] virtual Colour ForeColor() const = 0;
};

class TextBox : public Control {
 public:
  [[nodiscard]] virtual std::string Text() const = 0;
  /// Replaces the text whole, whatever the limit on typing is.
  virtual void setText(std::string_view text) = 0;
  virtual void SetFocus() = 0;
};

/// A drop-down list. The base keeps the list position and raises Click; the platform shows it.
class ComboBox : public Control {
 public:
  /// Appends an entry; the list position stays (-1 at first).
  void AddItem(std::string_view text);
  [[nodiscard]] std::int16_t ListIndex() const { return listIndex_; }
  /// Selects an entry (-1 for none) and raises Click, also when it was selected already.
  /// Throws SubscriptOutOfRange for a position that is not in the list.
  void setListIndex(std::int16_t index);
  virtual void setEnabled(bool enabled) = 0;

  Handler Click;

 protected:
  /// The user picked an entry that the platform shows already; raises Click.
  void picked(std::int16_t index);
  virtual void showNewItem(std::string_view text) = 0;
  virtual void showIndex(std::int16_t index) = 0;

 private:
  std::int16_t count_ = 0;
  std::int16_t listIndex_ = -1;
};

/// A check box, or a push button that stays down. Value: 0 unticked, 1 ticked, 2 indeterminate.
class CheckBox : public Control {
 public:
  [[nodiscard]] std::int16_t Value() const { return value_; }
  /// Sets and shows the value, then raises Click when it changed.
  void setValue(std::int16_t value);

  Handler Click;

 protected:
  /// The user changed the value, and the platform shows it already; raises Click.
  void toggled(std::int16_t value);
  virtual void showValue(std::int16_t value) = 0;

 private:
  std::int16_t value_ = 0;
};

class Button : public Control {
 public:
  Handler Click;
};

class Frame : public Control {};

/// Holds a picture of the program's art for others to show.
class Image : public Control {
 public:
  explicit Image(std::string picture) : picture_(std::move(picture)) {}
  /// Its name in the program's art.
  [[nodiscard]] const std::string& Picture() const { return picture_; }

 private:
  std::string picture_;
};

/// A place in a picture box, in the scale in force.
struct PointerStop {
  float X = 0;
  float Y = 0;
};

/// A picture box: retained drawing surface, container of labels, source of mouse events.
class PictureBox : public Control, public DrawingSurface {
 public:
  [[nodiscard]] virtual float Left() const = 0;  ///< twips in the container
  [[nodiscard]] virtual float Top() const = 0;
  /// Moves and sizes the control, in twips. A changed size raises Resize at once, before Move
  /// returns. Throws InvalidSize for a negative width or height and then changes nothing.
  virtual void Move(float left, float top, float width, float height) = 0;
  /// The colour of the pixel at a position in the scale in force, 0x00BBGGRR, or -1 outside.
  [[nodiscard]] virtual std::int32_t Point(float x, float y) const = 0;
  /// What a screen reader says about the picture; the image itself tells it nothing.
  virtual void setDescription(std::string_view text) = 0;

  Handler Resize;
  /// From a press to the release of the last button every mouse event comes here, wherever the
  /// pointer is. A double click's second press is a press.
  MouseHandler MouseDown;
  MouseHandler MouseUp;
  /// Where the keyboard's pointer stops, in their order. A platform with a keyboard moves a pointer
  /// along them and raises the mouse's events there.
  std::function<std::vector<PointerStop>()> PointerStops;
};

}  // namespace quintara
