#pragma once

#include <QString>
#include <QUrl>
#include <QWidget>
#include <functional>

class QHelpSearchEngine;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace quintara {

class HelpBook;

/// Looks for words in all pages of a book, by the help library's full-text index, which it has made
/// in the background. Pages that have a word in their title come first.
class SearchPanel : public QWidget {
 public:
  using Show = std::function<void(const QUrl&)>;

  /// Calls `show` with the page the reader picks. The book must outlive the panel.
  SearchPanel(HelpBook& book, Show show, QWidget* parent = nullptr);

  /// Searches, as soon as the index is there.
  void search(const QString& words);
  /// Puts the keyboard focus where words are typed.
  void start();

 private:
  void ask();
  void list();
  void open(const QListWidgetItem* item);

  QHelpSearchEngine& engine_;
  Show show_;
  QLineEdit* words_;
  QLabel* outcome_;
  QListWidget* found_;
  bool indexed_ = false;
};

}  // namespace quintara
