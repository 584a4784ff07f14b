#include "platform/qt/accessibility.hpp"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>

#include "platform/qt/form.hpp"
#include "platform/qt/picture_box_widget.hpp"

namespace quintara {

namespace {

/// The toolkit's own interface says the entry alone: of three boxes "Candle", "12 months" and
/// "Daily" nobody hears what they are for.
class SpokenComboBox final : public QAccessibleWidget {
 public:
  explicit SpokenComboBox(QComboBox& box)
      : QAccessibleWidget(&box, QAccessible::ComboBox), box_(box) {}

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) {
      return box_.currentText();
    }
    QString text = QAccessibleWidget::text(kind);
    if (kind == QAccessible::Name && box_.currentIndex() >= 0) {
      text += QStringLiteral(": ") + box_.currentText();
    }
    return text;
  }
  [[nodiscard]] int childCount() const override { return 1; }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(box_.view()) : nullptr;
  }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
    return child != nullptr && child->object() == box_.view() ? 0 : -1;
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.hasPopup = true;
    state.expanded = box_.view()->isVisible();
    state.collapsed = !state.expanded;
    return state;
  }
  [[nodiscard]] QStringList actionNames() const override { return {showMenuAction()}; }
  void doAction(const QString& action) override {
    if (action != showMenuAction() || !box_.isEnabled()) {
      return;
    }
    if (box_.view()->isVisible()) {
      box_.hidePopup();
    } else {
      box_.showPopup();
    }
  }

 private:
  QComboBox& box_;
};

QAccessibleInterface* interfaceOf(const QString& /*className*/, QObject* object) {
  if (auto* form = dynamic_cast<Form*>(object)) {
    return new QAccessibleWidget(form,
                                 form->isDialog() ? QAccessible::Dialog : QAccessible::Window);
  }
  if (auto* picture = dynamic_cast<PictureBoxWidget*>(object)) {
    return new QAccessibleWidget(picture, QAccessible::Graphic);
  }
  if (auto* combo = dynamic_cast<QComboBox*>(object)) {
    return new SpokenComboBox(*combo);
  }
  return nullptr;
}

}  // namespace

void installAccessibility() { QAccessible::installFactory(interfaceOf); }

}  // namespace quintara
