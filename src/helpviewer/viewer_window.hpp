#pragma once

#include <QKeySequence>
#include <QMainWindow>
#include <QUrl>
#include <functional>

class QToolBar;

namespace quintara {

class FindBar;
class HelpBook;
class HelpPage;
class Navigation;

/// The viewer's window: side panel, page, find bar and the keys that work everywhere in it.
class ViewerWindow : public QMainWindow {
 public:
  /// Opens at the keyword index with nothing typed. The book must outlive the window.
  explicit ViewerWindow(HelpBook& book);

  /// At the keyword index with nothing typed again, the page as it was left, and in front of other
  /// windows as far as the desktop allows it.
  void comeForward();

 private:
  void addToolBarActions();
  QAction* addKey(const QString& name, const QList<QKeySequence>& keys, std::function<void()> run);
  void escape();

  HelpPage* page_;
  FindBar* findBar_;
  Navigation* navigation_;
};

}  // namespace quintara
