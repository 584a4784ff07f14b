#include "helpviewer/search_panel.hpp"

#include <QHelpSearchEngine>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "helpviewer/help_book.hpp"

namespace quintara {

namespace {

/// Each word also as the beginning of a longer one. Signs mean something to the index.
QString asQuery(const QString& typed) {
  QString words = typed;
  for (QChar& sign : words) {
    if (!sign.isLetterOrNumber()) {
      sign = u' ';
    }
  }
  QStringList query = words.split(u' ', Qt::SkipEmptyParts);
  for (QString& word : query) {
    word += u'*';
  }
  return query.join(u' ');
}

}  // namespace

SearchPanel::SearchPanel(HelpBook& book, Show show, QWidget* parent)
    : QWidget(parent),
      engine_(*book.engine().searchEngine()),
      show_(std::move(show)),
      words_(new QLineEdit),
      outcome_(new QLabel),
      found_(new QListWidget) {
  auto* label = new QLabel(QStringLiteral("&Words on any page:"));
  label->setBuddy(words_);
  words_->setAccessibleName(QStringLiteral("Words on any page"));
  words_->setClearButtonEnabled(true);
  outcome_->setTextFormat(Qt::PlainText);
  outcome_->setWordWrap(true);
  found_->setAccessibleName(QStringLiteral("Pages found"));
  auto* column = new QVBoxLayout(this);
  for (QWidget* part : {static_cast<QWidget*>(label), static_cast<QWidget*>(words_),
                        static_cast<QWidget*>(outcome_), static_cast<QWidget*>(found_)}) {
    column->addWidget(part);
  }
  connect(words_, &QLineEdit::returnPressed, this, [this] { ask(); });
  connect(found_, &QListWidget::itemActivated, this, &SearchPanel::open);
  connect(found_, &QListWidget::itemClicked, this, &SearchPanel::open);
  connect(&engine_, &QHelpSearchEngine::indexingFinished, this, [this] {
    indexed_ = true;
    ask();
  });
  connect(&engine_, &QHelpSearchEngine::searchingFinished, this, [this] { list(); });
  engine_.reindexDocumentation();
}

void SearchPanel::start() {
  words_->setFocus();
  words_->selectAll();
}

void SearchPanel::search(const QString& words) {
  words_->setText(words);
  ask();
}

void SearchPanel::ask() {
  const QString query = asQuery(words_->text());
  if (indexed_ && !query.isEmpty()) {
    engine_.search(query);
  }
}

void SearchPanel::list() {
  QList<QHelpSearchResult> pages = engine_.searchResults(0, engine_.searchResultCount());
  const QString word = words_->text().simplified();
  std::stable_partition(pages.begin(), pages.end(), [&](const QHelpSearchResult& page) {
    return page.title().contains(word, Qt::CaseInsensitive);
  });
  found_->clear();
  for (const QHelpSearchResult& page : pages) {
    auto* item = new QListWidgetItem(page.title(), found_);
    item->setData(Qt::UserRole, page.url());
  }
  found_->setCurrentRow(0);
  outcome_->setText(pages.isEmpty() ? QStringLiteral("Nothing was found for \"%1\".").arg(word)
                                    : QStringLiteral("Pages found: %1").arg(pages.size()));
  // Walked with the arrow keys at once; without a page the words are typed anew.
  if (isVisible() && !pages.isEmpty()) {
    found_->setFocus();
  }
}

void SearchPanel::open(const QListWidgetItem* item) { show_(item->data(Qt::UserRole).toUrl()); }

}  // namespace quintara
