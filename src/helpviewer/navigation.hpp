#pragma once

#include <QTabWidget>
#include <QUrl>
#include <functional>

class QLineEdit;

namespace quintara {

class HelpBook;
class SearchPanel;

/// The side panel: the keyword index with its filter in front, the table of contents and the search
/// for any word behind it. What no keyword matches is searched for.
class Navigation : public QTabWidget {
 public:
  using Show = std::function<void(const QUrl&)>;

  /// Calls `show` with every page the reader picks. The book must outlive the panel.
  Navigation(HelpBook& book, Show show, QWidget* parent = nullptr);

  /// Puts the keyboard focus into the filter of the index.
  void focusIndex();
  /// Brings the search for any word to the front.
  void focusSearch();
  /// Empties the filter; false when it was empty already.
  bool clearFilter();
  /// Marks the page in the table of contents.
  void mark(const QUrl& page);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* indexTab();
  QWidget* contentsTab();

  HelpBook& book_;
  Show show_;
  QLineEdit* filter_;
  SearchPanel* search_;
};

}  // namespace quintara
