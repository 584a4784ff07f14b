#pragma once

#include <QSize>
#include <QWidget>

#include "platform/window.hpp"

namespace quintara {

class Dispatcher;

/// A top-level widget: tells of the user's resizing, closing and pointer moves.
class Form final : public QWidget {
 public:
  /// `owner`'s handlers are raised; it outlives the form.
  Form(const WindowDesign& design, const Window& owner, Dispatcher& dispatcher);

  /// Shows the form; a dialog without taking the focus, over the window in use, and painted.
  void present();
  /// As if the mouse had moved over the window's own background.
  void leaveControls() { moveOverGround({}); }
  [[nodiscard]] bool isDialog() const { return dialog_; }
  /// The program's main window while it is on screen, or null: what messages stand over.
  static QWidget* mainForm();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  /// F1 asks for help; Escape is as if the pointer moved off to the window's ground.
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void presentDialog();
  void moveOverGround(const MouseEvent& move);

  const Window& owner_;
  Dispatcher& dispatcher_;
  const bool dialog_;
  QSize knownSize_;
};

}  // namespace quintara
