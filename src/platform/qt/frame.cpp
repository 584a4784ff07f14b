#include <QGroupBox>
#include <QPainter>
#include <algorithm>

#include "platform/qt/make_control.hpp"
#include "platform/qt/mouse.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

namespace {

/// Draws the classic frame, whose caption interrupts the top line: the layout counts on the room
/// that the toolkit's own look would spend on a line for the caption.
class FrameWidget final : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    constexpr int kCaptionLeft = 8;
    constexpr int kGap = 2;
    QPainter painter(this);
    const QString caption = title().replace(QStringLiteral("&&"), QStringLiteral("&"));
    const QRect text(kCaptionLeft, 0, fontMetrics().horizontalAdvance(caption),
                     fontMetrics().height());
    painter.save();
    if (!caption.isEmpty()) {
      painter.setClipRegion(QRegion(rect()) - text.adjusted(-kGap, 0, kGap, 0));
    }
    drawLines(painter, text.height() / 2);
    painter.restore();
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(text, static_cast<int>(Qt::AlignLeft) | static_cast<int>(Qt::TextSingleLine),
                     caption);
  }

 private:
  /// Two outlines, one within the other, in device pixels, so that all sides are equally thick.
  void drawLines(QPainter& painter, int top) const {
    const double ratio = devicePixelRatioF();
    const int line = std::max(1, static_cast<int>(ratio));
    const QRect outer(0, static_cast<int>(top * ratio), static_cast<int>(width() * ratio) - line,
                      static_cast<int>((height() - top) * ratio) - line);
    painter.scale(1 / ratio, 1 / ratio);
    const auto outline = [&](const QRect& around, QPalette::ColorRole colour) {
      const QRegion inside(around.adjusted(line, line, -line, -line));
      for (const QRect& side : QRegion(around) - inside) {
        painter.fillRect(side, palette().color(colour));
      }
    };
    outline(outer.translated(line, line), QPalette::Light);
    outline(outer, QPalette::Mid);
  }
};

}  // namespace

std::unique_ptr<Control> makeFrame(const ControlDesign& design, QWidget& parent,
                                   Dispatcher& dispatcher) {
  auto* widget = new FrameWidget(withoutMnemonics(design.caption), &parent);
  prepare(*widget, design);
  auto frame = std::make_unique<Frame>();
  new MouseMoveHook(*widget, *frame, dispatcher);
  return frame;
}

}  // namespace quintara
