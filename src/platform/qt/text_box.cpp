#include <QEvent>
#include <QLineEdit>
#include <algorithm>

#include "platform/qt/accessibility.hpp"
#include "platform/qt/dispatcher.hpp"
#include "platform/qt/make_control.hpp"
#include "platform/qt/mouse.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

namespace {

class QtTextBox final : public TextBox {
 public:
  QtTextBox(QLineEdit& widget, int maxLength);
  [[nodiscard]] std::string Text() const override { return widget_.text().toStdString(); }
  void setText(std::string_view text) override;
  void SetFocus() override { widget_.setFocus(Qt::OtherFocusReason); }
  [[nodiscard]] int timesSet() const { return timesSet_; }

 private:
  void limitTyping();

  QLineEdit& widget_;
  const int limit_;   ///< characters that can be typed
  int timesSet_ = 0;  ///< by code, also to what it was
};

QtTextBox::QtTextBox(QLineEdit& widget, int maxLength)
    : widget_(widget), limit_(maxLength > 0 ? maxLength : widget.maxLength()) {
  widget_.setMaxLength(limit_);
  QObject::connect(&widget_, &QLineEdit::textEdited, &widget_, [this] { limitTyping(); });
}

void QtTextBox::setText(std::string_view text) {
  ++timesSet_;
  const QString whole = toQt(text);
  widget_.setMaxLength(std::max(limit_, static_cast<int>(whole.size())));
  widget_.setText(whole);
  widget_.setCursorPosition(0);
}

/// After a text from code that is longer than can be typed, the room shrinks with the text.
void QtTextBox::limitTyping() {
  const int room = std::max(limit_, static_cast<int>(widget_.text().size()));
  if (room == widget_.maxLength()) {
    return;
  }
  const int cursor = widget_.cursorPosition();
  widget_.setMaxLength(room);
  widget_.setCursorPosition(cursor);
}

/// A box that takes part in the mouse's work shows the arrow, others invite to type; and Enter
/// moves the keyboard's pointer over it. Which it is shows late: handlers are connected after the
/// control was made.
class PointerTarget final : public QObject {
 public:
  PointerTarget(QLineEdit& widget, const QtTextBox& control, Dispatcher& dispatcher)
      : QObject(&widget), widget_(widget), control_(control), dispatcher_(dispatcher) {
    widget.installEventFilter(this);
    connect(&widget, &QLineEdit::returnPressed, this, [this] { moveOver(); });
  }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Enter) {
      widget_.setCursor(control_.MouseMove ? Qt::ArrowCursor : Qt::IBeamCursor);
    }
    return false;
  }

 private:
  void moveOver() {
    if (!control_.MouseMove) {
      return;
    }
    dispatcher_.dispatch(widget_, [this] {
      const int before = control_.timesSet();
      control_.MouseMove({});
      if (control_.timesSet() != before) {
        say(*widget_.window(), QStringLiteral("Dropped: ") + toQt(control_.Text()));
      }
    });
  }

  QLineEdit& widget_;
  const QtTextBox& control_;
  Dispatcher& dispatcher_;
};

}  // namespace

std::unique_ptr<Control> makeTextBox(const ControlDesign& design, QWidget& parent,
                                     Dispatcher& dispatcher) {
  auto* widget = new QLineEdit(&parent);
  prepare(*widget, design);
  auto box = std::make_unique<QtTextBox>(*widget, design.maxLength);
  box->setText(design.caption);
  new MouseMoveHook(*widget, *box, dispatcher);
  new PointerTarget(*widget, *box, dispatcher);
  return box;
}

}  // namespace quintara
