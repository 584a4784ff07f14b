#include "helpviewer/viewer_window.hpp"

#include <QAction>
#include <QSplitter>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>
#include <utility>

#include "helpviewer/find_bar.hpp"
#include "helpviewer/help_book.hpp"
#include "helpviewer/help_page.hpp"
#include "helpviewer/navigation.hpp"

namespace quintara {

ViewerWindow::ViewerWindow(HelpBook& book)
    : page_(new HelpPage(book)),
      findBar_(new FindBar(*page_)),
      navigation_(new Navigation(book, [this](const QUrl& page) { page_->setSource(page); })) {
  setWindowTitle(QStringLiteral("Quintara Help"));
  auto* reading = new QWidget;
  auto* column = new QVBoxLayout(reading);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(page_);
  column->addWidget(findBar_);
  auto* halves = new QSplitter;
  halves->addWidget(navigation_);
  halves->addWidget(reading);
  halves->setStretchFactor(1, 1);
  halves->setSizes({260, 640});
  setCentralWidget(halves);
  resize(920, 640);

  addToolBarActions();
  connect(page_, &QTextBrowser::sourceChanged, navigation_, &Navigation::mark);
  page_->setSource(book.firstPage());
  navigation_->focusIndex();
}

void ViewerWindow::addToolBarActions() {
  QToolBar* bar = addToolBar(QStringLiteral("Tools"));
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  QAction* back = addKey(QStringLiteral("Back"), {QKeySequence(Qt::ALT | Qt::Key_Left)},
                         [this] { page_->backward(); });
  QAction* forward = addKey(QStringLiteral("Forward"), {QKeySequence(Qt::ALT | Qt::Key_Right)},
                            [this] { page_->forward(); });
  back->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
  forward->setIcon(style()->standardIcon(QStyle::SP_ArrowForward));
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(page_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(page_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);

  const auto& key = [](int code) { return QKeySequence(Qt::CTRL | static_cast<Qt::Key>(code)); };
  bar->addActions(
      {back, forward,
       addKey(QStringLiteral("Find"), {key(Qt::Key_F)}, [this] { findBar_->start(); }),
       addKey(QStringLiteral("Larger"), {key(Qt::Key_Plus), key(Qt::Key_Equal)},
              [this] { page_->zoom(1); }),
       addKey(QStringLiteral("Smaller"), {key(Qt::Key_Minus)}, [this] { page_->zoom(-1); })});
  addKey(QStringLiteral("Normal size"), {key(Qt::Key_0)}, [this] { page_->resetZoom(); });
  addKey(QStringLiteral("Search all pages"), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F)},
         [this] { navigation_->focusSearch(); });
  addKey(QStringLiteral("Find next"), {QKeySequence(Qt::Key_F3)},
         [this] { findBar_->next(false); });
  addKey(QStringLiteral("Find previous"), {QKeySequence(Qt::SHIFT | Qt::Key_F3)},
         [this] { findBar_->next(true); });
  addKey(QStringLiteral("Clear or close"), {QKeySequence(Qt::Key_Escape)}, [this] { escape(); });
  addKey(QStringLiteral("Close"), QKeySequence::keyBindings(QKeySequence::Close),
         [this] { close(); });
}

QAction* ViewerWindow::addKey(const QString& name, const QList<QKeySequence>& keys,
                              std::function<void()> run) {
  auto* action = new QAction(name, this);
  action->setShortcuts(keys);
  connect(action, &QAction::triggered, this, std::move(run));
  addAction(action);
  return action;
}

void ViewerWindow::escape() {
  if (findBar_->isVisible()) {
    findBar_->hide();
    page_->setFocus();
  } else if (!navigation_->clearFilter()) {
    close();
  }
}

void ViewerWindow::comeForward() {
  navigation_->clearFilter();
  navigation_->focusIndex();
  setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
  show();
  raise();
  activateWindow();
}

}  // namespace quintara
