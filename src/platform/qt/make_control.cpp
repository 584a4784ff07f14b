#include "platform/qt/make_control.hpp"

#include <QFont>
#include <QWidget>

#include "platform/form_font.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

QFont formFont(float points, bool bold) {
  QFont font(QStringList(kFormFontFamilies.begin(), kFormFontFamilies.end()));
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(formFontPixels(points));
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
