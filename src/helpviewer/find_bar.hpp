#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace quintara {

class HelpPage;

/// The strip under the page that looks for a text in it. Hidden until it is asked for.
class FindBar : public QWidget {
 public:
  /// The page must outlive the bar.
  explicit FindBar(HelpPage& page, QWidget* parent = nullptr);

  /// Shows the bar with the old text selected, ready to be typed over.
  void start();
  void next(bool backward);

 private:
  HelpPage& page_;
  QLineEdit* text_;
  QLabel* outcome_;
};

}  // namespace quintara
