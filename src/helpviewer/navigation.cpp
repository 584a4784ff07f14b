#include "helpviewer/navigation.hpp"

#include <QCoreApplication>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

#include "helpviewer/help_book.hpp"
#include "helpviewer/search_panel.hpp"

namespace quintara {

namespace {

bool movesInList(int key) {
  return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
         key == Qt::Key_PageDown;
}

// One click opens a topic, also under styles whose lists want a double click.
bool needsClick(const QWidget& list) {
  return list.style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick, nullptr, &list) ==
         0;
}

QUrl choose(QWidget* parent, const QList<QHelpLink>& pages, const QString& keyword) {
  QStringList titles;
  for (const QHelpLink& page : pages) {
    titles << page.title;
  }
  bool accepted = false;
  const QString title = QInputDialog::getItem(parent, QStringLiteral("Quintara Help"),
                                              QStringLiteral("Pages about %1:").arg(keyword),
                                              titles, 0, false, &accepted);
  const auto row = titles.indexOf(title);
  return accepted && row >= 0 ? pages[row].url : QUrl();
}

}  // namespace

Navigation::Navigation(HelpBook& book, Show show, QWidget* parent)
    : QTabWidget(parent),
      book_(book),
      show_(std::move(show)),
      filter_(new QLineEdit),
      search_(new SearchPanel(book, show_)) {
  setAccessibleName(QStringLiteral("Topics"));
  addTab(indexTab(), QStringLiteral("In&dex"));
  addTab(contentsTab(), QStringLiteral("&Contents"));
  addTab(search_, QStringLiteral("&Search"));
}

QWidget* Navigation::indexTab() {
  QHelpIndexWidget* list = book_.engine().indexWidget();
  list->setAccessibleName(QStringLiteral("Keywords"));
  filter_->setAccessibleName(QStringLiteral("Look for keyword"));
  filter_->setClearButtonEnabled(true);
  filter_->installEventFilter(this);
  auto* label = new QLabel(QStringLiteral("&Look for:"));
  label->setBuddy(filter_);

  auto* none =
      new QLabel(QStringLiteral("No keyword has these letters. Enter searches all pages."));
  none->setWordWrap(true);
  none->hide();
  connect(filter_, &QLineEdit::textChanged, list, [list, none](const QString& text) {
    list->filterIndices(text);
    none->setVisible(list->model()->rowCount() == 0);
  });
  connect(filter_, &QLineEdit::returnPressed, list, [this, list] {
    if (list->model()->rowCount() > 0) {
      list->activateCurrentItem();
    } else {
      setCurrentWidget(search_);
      search_->search(filter_->text());
    }
  });
  connect(list, &QHelpIndexWidget::documentActivated, this,
          [this](const QHelpLink& page) { show_(page.url); });
  connect(list, &QHelpIndexWidget::documentsActivated, this,
          [this](const QList<QHelpLink>& pages, const QString& keyword) {
            const QUrl page = choose(this, pages, keyword);
            if (page.isValid()) {
              show_(page);
            }
          });
  if (needsClick(*list)) {
    connect(list, &QListView::clicked, list, &QHelpIndexWidget::activateCurrentItem);
  }

  auto* tab = new QWidget;
  auto* column = new QVBoxLayout(tab);
  column->addWidget(label);
  column->addWidget(filter_);
  column->addWidget(none);
  column->addWidget(list);
  return tab;
}

QWidget* Navigation::contentsTab() {
  QHelpContentWidget* tree = book_.engine().contentWidget();
  tree->setAccessibleName(QStringLiteral("Table of contents"));
  tree->setHeaderHidden(true);
  QHelpContentModel* model = book_.engine().contentModel();
  connect(model, &QHelpContentModel::contentsCreated, tree, &QTreeView::expandAll);
  connect(tree, &QHelpContentWidget::linkActivated, this, show_);
  if (needsClick(*tree)) {
    connect(tree, &QTreeView::clicked, this, [this, model](const QModelIndex& index) {
      if (const QHelpContentItem* item = model->contentItemAt(index)) {
        show_(item->url());
      }
    });
  }
  return tree;
}

void Navigation::focusIndex() {
  setCurrentIndex(0);
  filter_->setFocus();
}

void Navigation::focusSearch() {
  setCurrentWidget(search_);
  search_->start();
}

bool Navigation::clearFilter() {
  if (filter_->text().isEmpty()) {
    return false;
  }
  filter_->clear();
  return true;
}

void Navigation::mark(const QUrl& page) {
  QHelpContentWidget* tree = book_.engine().contentWidget();
  const QModelIndex index = tree->indexOf(page);
  if (index.isValid()) {
    tree->setCurrentIndex(index);
  }
}

bool Navigation::eventFilter(QObject* watched, QEvent* event) {
  // The list is walked with the arrow keys while the focus stays in the filter.
  if (watched == filter_ && event->type() == QEvent::KeyPress &&
      movesInList(static_cast<QKeyEvent*>(event)->key())) {
    return QCoreApplication::sendEvent(book_.engine().indexWidget(), event);
  }
  return QTabWidget::eventFilter(watched, event);
}

}  // namespace quintara
