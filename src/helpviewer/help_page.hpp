#pragma once

#include <QFont>
#include <QTextBrowser>
#include <QUrl>

namespace quintara {

class HelpBook;

/// Shows the pages of one book. Links lead within the book only; anything else is not followed.
class HelpPage : public QTextBrowser {
 public:
  /// The book must outlive the page.
  explicit HelpPage(HelpBook& book, QWidget* parent = nullptr);

  /// Larger for positive, smaller for negative steps; stops at sizes nobody can read or fit.
  void zoom(int steps);
  void resetZoom();

  /// Selects the next or previous place of `text`, going round at the ends; false when there is
  /// none.
  bool findText(const QString& text, bool backward);

  /// A page or style sheet as bytes, a picture as an image at the screen's density.
  QVariant loadResource(int type, const QUrl& name) override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  QVariant picture(const QUrl& url) const;
  void chooseLinkColour();

  HelpBook& book_;
  QFont plainFont_;
};

}  // namespace quintara
