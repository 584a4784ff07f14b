#include "helpviewer/help_page.hpp"

#include <QImage>
#include <QTextCursor>
#include <QTextDocument>

#include "helpviewer/help_book.hpp"

namespace quintara {

namespace {

constexpr qreal kSmallestPoints = 6;
constexpr qreal kLargestPoints = 40;

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
  setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
  connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
    const QUrl target = source().resolved(link);
    if (target.scheme() == QLatin1String("qthelp")) {
      setSource(target);
    }
  });
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
