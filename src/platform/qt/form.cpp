#include "platform/qt/form.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QMouseEvent>
#include <QWindow>

#include "platform/qt/dispatcher.hpp"
#include "platform/qt/make_control.hpp"
#include "platform/qt/mouse.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

namespace {
constexpr Qt::WindowFlags kDialogFlags =
    Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;
}

Form::Form(const WindowDesign& design, const Window& owner, Dispatcher& dispatcher)
    : QWidget(nullptr, design.fixedDialog ? kDialogFlags : Qt::WindowFlags(Qt::Window)),
      owner_(owner),
      dispatcher_(dispatcher),
      dialog_(design.fixedDialog),
      knownSize_(toPixelSize(design.scaleWidth, design.scaleHeight)) {
  setObjectName(toQt(design.name));
  setWindowTitle(toQt(design.caption));
  setMouseTracking(true);
  setFont(formFont(8.25F, false));
  if (dialog_) {
    setFixedSize(knownSize_);
    setAttribute(Qt::WA_ShowWithoutActivating);
  } else {
    resize(knownSize_);
  }
}

QWidget* Form::mainForm() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    const auto* form = dynamic_cast<const Form*>(widget);
    if (form != nullptr && !form->dialog_ && form->isVisible()) {
      return widget;
    }
  }
  return nullptr;
}

void Form::present() {
  if (dialog_) {
    presentDialog();
  } else {
    show();
  }
}

void Form::presentDialog() {
  winId();
  if (const QWidget* main = mainForm()) {
    windowHandle()->setTransientParent(main->windowHandle());
  }
  show();
  raise();
  // What follows may keep the program busy for long, and should not show an empty window.
  const Dispatcher::Busy busy(dispatcher_);
  QCoreApplication::processEvents();
}

void Form::resizeEvent(QResizeEvent* event) {
  // Being shown in the size that was designed is no resize.
  if (event->size() == knownSize_) {
    return;
  }
  knownSize_ = event->size();
  dispatcher_.dispatch(*this, [this] {
    if (owner_.Resize) {
      owner_.Resize();
    }
  });
}

void Form::mouseMoveEvent(QMouseEvent* event) { moveOverGround(toMouseEvent(*event)); }

void Form::moveOverGround(const MouseEvent& move) {
  if (owner_.MouseMove) {
    dispatcher_.dispatch(*this, [this, move] { owner_.MouseMove(move); });
  }
}

void Form::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    leaveControls();
  } else if (event->key() == Qt::Key_F1 && owner_.Help && !event->isAutoRepeat()) {
    dispatcher_.dispatch(*this, [this] { owner_.Help(); });
  } else {
    QWidget::keyPressEvent(event);
  }
}

void Form::closeEvent(QCloseEvent* event) {
  // A dialog goes when its work is done.
  if (dialog_) {
    event->ignore();
  } else {
    dispatcher_.end(0);
  }
}

}  // namespace quintara
