#include "helpviewer/help_page.hpp"

#include <QEvent>
#include <QImage>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

#include "helpviewer/help_book.hpp"

namespace quintara {

namespace {

constexpr qreal kSmallestPoints = 6;
constexpr qreal kLargestPoints = 40;

/// Brightness as the eye weighs it, 0 to 1, of a colour of sRGB.
double luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

/// What is written in one colour on the other can be read.
bool contrasts(const QColor& one, const QColor& other) {
  constexpr double kGlare = 0.05;
  constexpr double kReadable = 4.5;
  const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
  return (light + kGlare) / (dark + kGlare) >= kReadable;
}

QByteArray missingPage(const QUrl& url) {
  return QStringLiteral("<p>The page %1 is missing from this help file.</p>")
      .arg(url.fileName().toHtmlEscaped())
      .toUtf8();
}

// chart.png at 1x has its double-density twin in chart@2x.png.
QUrl denseTwin(QUrl url) {
  QString path = url.path();
  const auto dot = path.lastIndexOf(QLatin1Char('.'));
  if (dot < 0) {
    return url;
  }
  path.insert(dot, QStringLiteral("@2x"));
  url.setPath(path);
  return url;
}

}  // namespace

HelpPage::HelpPage(HelpBook& book, QWidget* parent)
    : QTextBrowser(parent), book_(book), plainFont_(font()) {
  setAccessibleName(QStringLiteral("Help page"));
  setOpenLinks(false);
  chooseLinkColour();
  setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
  connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
    const QUrl target = source().resolved(link);
    if (target.scheme() == QLatin1String("qthelp")) {
      setSource(target);
    }
  });
}

/// Palettes for a dark desktop often keep the dark blue of links on paper.
void HelpPage::chooseLinkColour() {
  const QColor ground = palette().color(QPalette::Base);
  QColor link = palette().color(QPalette::Link);
  for (const char* other : {"#8ab4f8", "#0b57d0"}) {
    if (!contrasts(link, ground)) {
      link = QColor(other);
    }
  }
  document()->setDefaultStyleSheet(QStringLiteral("a { color: %1; }").arg(link.name()));
}

void HelpPage::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && source().isValid()) {
    chooseLinkColour();
    reload();
  }
}

void HelpPage::zoom(int steps) {
  const qreal points = font().pointSizeF() + steps;
  if (points >= kSmallestPoints && points <= kLargestPoints) {
    zoomIn(steps);
  }
}

void HelpPage::resetZoom() { setFont(plainFont_); }

bool HelpPage::findText(const QString& text, bool backward) {
  const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  if (find(text, flags)) {
    return true;
  }
  const QTextCursor before = textCursor();
  moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
  if (find(text, flags)) {
    return true;
  }
  setTextCursor(before);
  return false;
}

QVariant HelpPage::loadResource(int type, const QUrl& name) {
  const QUrl url = source().resolved(name);
  if (type == QTextDocument::ImageResource) {
    return picture(url);
  }
  const QByteArray bytes = book_.engine().fileData(url);
  if (bytes.isEmpty() && type == QTextDocument::HtmlResource) {
    return missingPage(url);
  }
  return bytes;
}

QVariant HelpPage::picture(const QUrl& url) const {
  if (devicePixelRatioF() > 1) {
    QImage dense = QImage::fromData(book_.engine().fileData(denseTwin(url)));
    dense.setDevicePixelRatio(2);
    if (!dense.isNull()) {
      return dense;
    }
  }
  return QImage::fromData(book_.engine().fileData(url));
}

}  // namespace quintara
