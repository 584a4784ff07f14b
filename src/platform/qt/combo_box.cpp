#include <QComboBox>
#include <QWheelEvent>

#include "platform/qt/dispatcher.hpp"
#include "platform/qt/make_control.hpp"
#include "platform/qt/mouse.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

namespace {

class ComboBoxWidget final : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void wheelEvent(QWheelEvent* event) override {
    // A pointer that happens to rest here is no reason to change the entry.
    if (hasFocus()) {
      QComboBox::wheelEvent(event);
    } else {
      event->ignore();
    }
  }
};

class QtComboBox final : public ComboBox {
 public:
  QtComboBox(QComboBox& widget, Dispatcher& dispatcher) : widget_(widget) {
    // `activated` tells of the user's picks alone, also of the entry that was there already.
    QObject::connect(&widget, &QComboBox::activated, &widget, [this, &dispatcher](int index) {
      dispatcher.dispatch(widget_, [this, index] { picked(static_cast<std::int16_t>(index)); });
    });
  }
  void setEnabled(bool enabled) override { widget_.setEnabled(enabled); }

 protected:
  void showNewItem(std::string_view text) override {
    widget_.addItem(toQt(text));
    // The first entry would select itself.
    widget_.setCurrentIndex(ListIndex());
  }
  void showIndex(std::int16_t index) override { widget_.setCurrentIndex(index); }

 private:
  QComboBox& widget_;
};

}  // namespace

std::unique_ptr<Control> makeComboBox(const ControlDesign& design, QWidget& parent,
                                      Dispatcher& dispatcher) {
  auto* widget = new ComboBoxWidget(&parent);
  prepare(*widget, design);
  widget->setPlaceholderText(toQt(design.caption));
  widget->setFocusPolicy(Qt::StrongFocus);
  auto box = std::make_unique<QtComboBox>(*widget, dispatcher);
  new MouseMoveHook(*widget, *box, dispatcher);
  return box;
}

}  // namespace quintara
