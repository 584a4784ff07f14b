#include "platform/qt/make_control.hpp"

#include <QFont>
#include <QWidget>

#include "platform/qt/units.hpp"

namespace quintara {

QFont formFont(float points, bool bold) {
  QFont font({"Liberation Sans", "Arimo", "Arial", "Helvetica"});
  font.setStyleHint(QFont::SansSerif);
  // Pixels, at 96 to the inch: the layout has no room for a desktop's other idea of a point.
  font.setPixelSize(static_cast<int>(std::lround(points * 96 / 72)));
  font.setBold(bold);
  return font;
}

QString spokenName(const ControlDesign& design) {
  if (!design.meaning.empty()) {
    return toQt(design.meaning);
  }
  QString name = toQt(design.caption);
  if (name.endsWith(u':')) {
    name.chop(1);
  }
  return name;
}

QString withoutMnemonics(std::string_view caption) {
  return toQt(caption).replace(u'&', QStringLiteral("&&"));
}

void prepare(QWidget& widget, const ControlDesign& design) {
  widget.setObjectName(toQt(design.name));
  widget.setGeometry(
      QRect(toPixels(design.left, design.top), toPixelSize(design.width, design.height)));
  widget.setFont(formFont(design.fontSize, design.bold));
  widget.setAccessibleName(spokenName(design));
  widget.setToolTip(toQt(design.tooltip));
  widget.setAttribute(Qt::WA_NoMousePropagation);
}

}  // namespace quintara
