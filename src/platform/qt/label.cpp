#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <algorithm>

#include "platform/qt/make_control.hpp"
#include "platform/qt/mouse.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

namespace {

class LabelWidget final : public QLabel {
 public:
  LabelWidget(const ControlDesign& design, QWidget& parent);
  void show(const QString& caption);
  void setTextColour(const QColor& colour);

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void followTheme();
  void grow();

  const QRect design_;
  const QString meaning_;
  const LabelLook look_;
  const bool hasFixedText_;
};

LabelWidget::LabelWidget(const ControlDesign& design, QWidget& parent)
    : QLabel(&parent),
      design_(toPixels(design.left, design.top), toPixelSize(design.width, design.height)),
      meaning_(toQt(design.meaning)),
      look_(design.look),
      hasFixedText_(!design.caption.empty()) {
  prepare(*this, design);
  setTextFormat(Qt::PlainText);
  setIndent(look_.bordered ? 3 : 0);
  const auto across = look_.centred ? Qt::AlignHCenter : Qt::AlignLeft;
  setAlignment(across | (look_.bordered ? Qt::AlignVCenter : Qt::AlignTop));
  if (design.hasBackColor && !look_.transparent) {
    QPalette colours = palette();
    colours.setColor(QPalette::Window, toQt(design.backColor));
    setPalette(colours);
    setAutoFillBackground(true);
  }
  if (design.hasForeColor) {
    setTextColour(toQt(design.foreColor));
  }
  followTheme();
  show(toQt(design.caption));
}

void LabelWidget::show(const QString& caption) {
  if (caption != text()) {
    setText(caption);
  }
  if (!meaning_.isEmpty()) {
    setAccessibleName(caption.isEmpty() ? meaning_ : meaning_ + QStringLiteral(": ") + caption);
  }
  grow();
}

/// Makes a label larger than designed where its font needs that; never a bordered one, a grid's
/// cell. One that gets its text later keeps its width, as nobody knows how long that will be.
void LabelWidget::grow() {
  QRect place = design_;
  const QSize wanted = sizeHint();
  if (!look_.bordered && hasFixedText_ && wanted.width() > place.width()) {
    const int growth = wanted.width() - place.width();
    place.adjust(look_.centred ? -growth / 2 : 0, 0, look_.centred ? growth - growth / 2 : growth,
                 0);
  }
  if (!look_.bordered) {
    place.setHeight(std::max(place.height(), wanted.height()));
  }
  setGeometry(place);
}

void LabelWidget::setTextColour(const QColor& colour) {
  QPalette colours = palette();
  colours.setColor(QPalette::WindowText, colour);
  setPalette(colours);
}

void LabelWidget::followTheme() {
  if (!look_.readout) {
    return;
  }
  constexpr int kReadable = 128;
  const QColor themed = palette().color(QPalette::HighlightedText);
  // Themes with a light selection have a dark text on it, which a black chart would swallow.
  const QColor readable = qGray(themed.rgb()) < kReadable ? QColor(Qt::white) : themed;
  // Setting a palette comes back here.
  if (palette().color(QPalette::WindowText) != readable) {
    setTextColour(readable);
  }
}

void LabelWidget::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) {
    followTheme();
  }
  QLabel::changeEvent(event);
}

/// The toolkit's own border would take on the text's colour. Device pixels, so that all four sides
/// are equally thick.
void LabelWidget::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!look_.bordered) {
    return;
  }
  const double ratio = devicePixelRatioF();
  const int line = std::max(1, static_cast<int>(ratio));
  // Rounded as the background is, which would show beyond the border otherwise.
  const QRect outer(0, 0, qRound(width() * ratio), qRound(height() * ratio));
  QPainter painter(this);
  painter.scale(1 / ratio, 1 / ratio);
  painter.setClipRegion(QRegion(outer) - outer.adjusted(line, line, -line, -line));
  painter.fillRect(outer, QColor(Qt::darkGray).darker());
}

class QtLabel final : public Label {
 public:
  explicit QtLabel(LabelWidget& widget) : widget_(widget) {}
  [[nodiscard]] std::string Caption() const override { return widget_.text().toStdString(); }
  void setCaption(std::string_view text) override { widget_.show(toQt(text)); }
  [[nodiscard]] Colour ForeColor() const override {
    return fromQt(widget_.palette().color(QPalette::WindowText));
  }

 private:
  LabelWidget& widget_;
};

}  // namespace

std::unique_ptr<Control> makeLabel(const ControlDesign& design, QWidget& parent,
                                   Dispatcher& dispatcher) {
  auto* widget = new LabelWidget(design, parent);
  auto label = std::make_unique<QtLabel>(*widget);
  new MouseMoveHook(*widget, *label, dispatcher);
  return label;
}

}  // namespace quintara
