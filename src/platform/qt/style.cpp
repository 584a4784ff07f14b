#include "platform/qt/style.hpp"

#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

namespace quintara {

namespace {

/// Measures that the fixed layout depends on do not follow the desktop's font.
class FormStyle final : public QProxyStyle {
 public:
  FormStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override {
    switch (metric) {
      case PM_IndicatorWidth:
      case PM_IndicatorHeight:
        return 13;
      default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
  }

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) {
      return 0;
    }
    return QProxyStyle::styleHint(hint, option, widget, result);
  }

  /// On a dark ground the outlines of empty boxes would be darker still, and hardly seen.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isBox = element == PE_IndicatorCheckBox || element == PE_PanelLineEdit;
    // The focus has an outline of its own, that of a check box only for the keyboard's users.
    const bool showsFocus =
        option->state.testFlag(State_HasFocus) &&
        (element == PE_PanelLineEdit || option->state.testFlag(State_KeyboardFocusChange));
    constexpr int kDark = 128;
    const bool onDark = qGray(option->palette.color(QPalette::Window).rgb()) < kDark;
    if (isBox && onDark && !showsFocus) {
      drawOutline(*option, *painter);
    }
  }

 private:
  static void drawOutline(const QStyleOption& option, QPainter& painter) {
    constexpr double kHalf = 0.5;
    constexpr double kCorner = 2;
    QColor colour = option.palette.color(QPalette::WindowText);
    colour.setAlphaF(kHalf);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(colour);
    const QRectF middle = QRectF(option.rect).adjusted(kHalf, kHalf, -kHalf, -kHalf);
    painter.drawRoundedRect(middle, kCorner, kCorner);
    painter.restore();
  }
};

}  // namespace

QStyle* newStyle() { return new FormStyle; }

}  // namespace quintara
