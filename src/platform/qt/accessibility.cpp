#include "platform/qt/accessibility.hpp"

#include <QAbstractItemView>
#include <QAccessibleObject>
#include <QAccessibleWidget>
#include <QComboBox>
#include <array>
#include <utility>

#include "platform/qt/form.hpp"
#include "platform/qt/picture_box_widget.hpp"

namespace quintara {

namespace {

void tell(QAccessibleInterface& source, QAccessible::Event what) {
  QAccessibleEvent event(&source, what);
  QAccessible::updateAccessibility(&event);
}

/// What is spoken without being a control, as a child of the widget that says it.
class Spoken final : public QAccessibleObject {
 public:
  Spoken(QWidget& by, QAccessible::Role role) : QAccessibleObject(nullptr), by_(by), role_(role) {}
  void setName(const QString& name) { name_ = name; }

  [[nodiscard]] bool isValid() const override { return true; }
  [[nodiscard]] QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(&by_);
  }
  [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override {
    return -1;
  }
  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? name_ : QString();
  }
  [[nodiscard]] QRect rect() const override { return parent()->rect(); }
  [[nodiscard]] QAccessible::Role role() const override { return role_; }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state;
    state.focusable = role_ == QAccessible::ListItem;
    state.focused = state.focusable && by_.hasFocus();
    return state;
  }

 private:
  QWidget& by_;
  const QAccessible::Role role_;
  QString name_;
};

/// A widget that has more to say than its name. A reader speaks what newly gets the focus, so there
/// are two children that get it by turns; and notifications. Of a changed name or description it
/// speaks nothing under Qt 6.4, whose bridge does not pass the text on.
class Speaker final : public QAccessibleWidget {
 public:
  Speaker(QWidget& widget, QAccessible::Role role, QAccessible::Role spoken)
      : QAccessibleWidget(&widget, role) {
    for (std::size_t i = 0; i < children_.size(); ++i) {
      children_.at(i) = new Spoken(widget, spoken);
      ids_.at(i) = QAccessible::registerAccessibleInterface(children_.at(i));
    }
  }
  Speaker(const Speaker&) = delete;
  Speaker& operator=(const Speaker&) = delete;
  ~Speaker() override {
    for (const QAccessible::Id id : ids_) {
      QAccessible::deleteAccessibleInterface(id);
    }
  }

  void say(const QString& text) {
    speaks_ = !text.isEmpty();
    if (speaks_) {
      std::swap(children_[0], children_[1]);
      Spoken& child = *children_[0];
      child.setName(text);
      tell(child, QAccessible::NameChanged);
      tell(child, child.state().focusable ? QAccessible::Focus : QAccessible::ObjectShow);
    } else if (widget()->hasFocus()) {  // which goes back from the child
      tell(*this, QAccessible::Focus);
    }
  }

  [[nodiscard]] int childCount() const override {
    return QAccessibleWidget::childCount() + (speaks_ ? 1 : 0);
  }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    const bool isSpoken = speaks_ && index == QAccessibleWidget::childCount();
    return isSpoken ? children_[0] : QAccessibleWidget::child(index);
  }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
    return child == children_[0] && speaks_ ? QAccessibleWidget::childCount()
                                            : QAccessibleWidget::indexOfChild(child);
  }

 private:
  std::array<Spoken*, 2> children_{};     ///< the toolkit's; the first is what was said last
  std::array<QAccessible::Id, 2> ids_{};  ///< theirs, in either order
  bool speaks_ = false;
};

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
    return new Speaker(*form, form->isDialog() ? QAccessible::Dialog : QAccessible::Window,
                       QAccessible::Notification);
  }
  if (auto* picture = dynamic_cast<PictureBoxWidget*>(object)) {
    return new Speaker(*picture, QAccessible::Graphic, QAccessible::ListItem);
  }
  if (auto* combo = dynamic_cast<QComboBox*>(object)) {
    return new SpokenComboBox(*combo);
  }
  return nullptr;
}

}  // namespace

void installAccessibility() { QAccessible::installFactory(interfaceOf); }

void say(QWidget& by, const QString& text) {
  if (!QAccessible::isActive()) {
    return;
  }
  if (auto* speaker = dynamic_cast<Speaker*>(QAccessible::queryAccessibleInterface(&by))) {
    speaker->say(text);
  }
}

}  // namespace quintara
