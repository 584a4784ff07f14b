#include <QCheckBox>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "platform/qt/dispatcher.hpp"
#include "platform/qt/make_control.hpp"
#include "platform/qt/mouse.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

namespace {

class CheckBoxWidget final : public QCheckBox {
 public:
  using QCheckBox::QCheckBox;
  [[nodiscard]] std::int16_t value() const {
    return static_cast<std::int16_t>(checkState() == Qt::Unchecked          ? 0
                                     : checkState() == Qt::PartiallyChecked ? 2
                                                                            : 1);
  }
  void setValue(std::int16_t value) {
    setCheckState(value == 0 ? Qt::Unchecked : value == 1 ? Qt::Checked : Qt::PartiallyChecked);
  }

 protected:
  /// The whole control takes a click, not the tick's square alone.
  [[nodiscard]] bool hitButton(const QPoint& at) const override { return rect().contains(at); }
  /// A click never leads to the indeterminate state, only out of it.
  void nextCheckState() override {
    setTristate(false);
    setCheckState(checkState() == Qt::Unchecked ? Qt::Checked : Qt::Unchecked);
  }
};

/// A button that stays down while it is ticked, in the colours of a selection.
class PushCheckBoxWidget final : public QPushButton {
 public:
  explicit PushCheckBoxWidget(QWidget* parent) : QPushButton(parent) { setCheckable(true); }
  [[nodiscard]] std::int16_t value() const { return isChecked() ? 1 : 0; }
  void setValue(std::int16_t value) { setChecked(value != 0); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    if (isChecked()) {
      const QPalette colours = palette();
      option.palette.setColor(QPalette::Button, colours.color(QPalette::Highlight));
      option.palette.setColor(QPalette::ButtonText, colours.color(QPalette::HighlightedText));
    }
    painter.drawControl(QStyle::CE_PushButton, option);
    // The style's ring has the colour that now fills the button.
    if (isChecked() && hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
      painter.setPen(option.palette.color(QPalette::ButtonText));
      painter.drawRect(rect().adjusted(3, 3, -4, -4));
    }
  }
};

template <class Widget>
class QtCheckBox final : public CheckBox {
 public:
  QtCheckBox(Widget& widget, Dispatcher& dispatcher) : widget_(widget) {
    // `clicked` is never raised from code.
    const auto userChanged = [this, &dispatcher] {
      dispatcher.dispatch(widget_, [this] { toggled(widget_.value()); });
    };
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, userChanged);
    // A screen reader ticks the box without a click. Whatever else did is known by then.
    QObject::connect(
        &widget, &QAbstractButton::toggled, &widget,
        [this, userChanged] {
          if ((widget_.value() != 0) != (Value() != 0)) {
            userChanged();
          }
        },
        Qt::QueuedConnection);
  }

 protected:
  void showValue(std::int16_t value) override { widget_.setValue(value); }

 private:
  Widget& widget_;
};

template <class Widget>
std::unique_ptr<Control> make(const ControlDesign& design, QWidget& parent,
                              Dispatcher& dispatcher) {
  auto* widget = new Widget(&parent);
  prepare(*widget, design);
  widget->setText(withoutMnemonics(design.caption));
  auto box = std::make_unique<QtCheckBox<Widget>>(*widget, dispatcher);
  new MouseMoveHook(*widget, *box, dispatcher);
  return box;
}

}  // namespace

std::unique_ptr<Control> makeCheckBox(const ControlDesign& design, QWidget& parent,
                                      Dispatcher& dispatcher) {
  return make<CheckBoxWidget>(design, parent, dispatcher);
}

std::unique_ptr<Control> makePushCheckBox(const ControlDesign& design, QWidget& parent,
                                          Dispatcher& dispatcher) {
  return make<PushCheckBoxWidget>(design, parent, dispatcher);
}

}  // namespace quintara
