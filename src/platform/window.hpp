#pragma once

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <typeinfo>

#include "platform/controls.hpp"

namespace quintara {

enum class ControlKind {
  Label,
  TextBox,
  ComboBox,
  CheckBox,
  PushCheckBox,  ///< a check box drawn as a push button that stays down while ticked
  Button,
  PictureButton,
  Frame,
  Image,
  PictureBox,
};

/// How a label is drawn. Result and readout labels are records of their own in the layout table.
struct LabelLook {
  bool centred = false;
  bool bordered = false;     ///< single line around it
  bool transparent = false;  ///< what lies under the label shows through
  bool readout = false;      ///< text in the highlighted-text system colour, readable on black
};

/// A control as designed. Positions and sizes in twips in the container's inner area.
struct ControlDesign {
  ControlKind kind = ControlKind::Label;
  std::string name{};
  std::string container{};  ///< name of a frame or picture box added earlier; empty: the window
  std::string caption{};
  float left = 0;
  float top = 0;
  float width = 0;
  float height = 0;
  std::string meaning{};  ///< what a screen reader calls the control; the caption if empty
  std::string tooltip{};
  std::string picture{};  ///< name in the program's art, without folder and ending
  Colour foreColor{};     ///< labels and picture boxes; used when hasForeColor
  Colour backColor{};
  bool hasForeColor = false;
  bool hasBackColor = false;
  LabelLook look{};
  float fontSize = 8.25F;  ///< points of "MS Sans Serif"
  bool bold = false;
  int maxLength = 0;     ///< characters that can be typed; 0: no limit
  bool pilesUp = false;  ///< a button's presses that came during one handler count once
};

struct WindowDesign {
  std::string name{};
  std::string caption{};
  float scaleWidth = 0;  ///< client area, twips
  float scaleHeight = 0;
  bool fixedDialog = false;  ///< fixed border, no minimise or maximise button, not in the task bar
};

/// A window and its controls. Destroying it is `Unload`.
class Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window() = default;

  /// Creates a control; the window owns it.
  Control& add(const ControlDesign& design);
  /// The control of that name. Throws std::out_of_range for an unknown name, std::bad_cast for
  /// another kind: both are mistakes in the program, not run-time errors.
  template <class Kind>
  [[nodiscard]] Kind& control(std::string_view name) const {
    return dynamic_cast<Kind&>(*controls_.at(std::string(name)));
  }
  /// The order in which the focus moves, by control names.
  virtual void setTabOrder(std::span<const std::string> names) = 0;

  /// Modeless, with no owner.
  virtual void Show() = 0;
  /// Position of the window with its border, twips on the screen; the size is kept.
  virtual void Move(float left, float top) = 0;
  [[nodiscard]] virtual std::string Caption() const = 0;
  [[nodiscard]] virtual float Width() const = 0;  ///< with the border, twips
  [[nodiscard]] virtual float Height() const = 0;
  [[nodiscard]] virtual float ScaleWidth() const = 0;  ///< client area, twips
  [[nodiscard]] virtual float ScaleHeight() const = 0;

  Handler Resize;          ///< the client area's size changed; of sizes that pile up, the last
  MouseHandler MouseMove;  ///< over the window's own background
  Handler Help;            ///< F1 was pressed

 protected:
  virtual std::unique_ptr<Control> create(const ControlDesign& design) = 0;

 private:
  std::map<std::string, std::unique_ptr<Control>> controls_;
};

}  // namespace quintara
