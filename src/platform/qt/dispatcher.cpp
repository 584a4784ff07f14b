#include "platform/qt/dispatcher.hpp"

#include <QApplication>
#include <QScopedValueRollback>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <exception>
#include <utility>

#include "values/errors.hpp"

namespace quintara {

namespace {

/// A message box that a handler shows needs its own input.
bool belongsToModalWindow(const QObject& receiver) {
  const QWidget* modal = QApplication::activeModalWidget();
  if (modal == nullptr) {
    return false;
  }
  if (receiver.isWindowType()) {
    return modal->windowHandle() == &receiver;
  }
  return static_cast<const QWidget&>(receiver).window() == modal;
}

}  // namespace

Dispatcher::Dispatcher(Report report) : report_(std::move(report)) {
  QCoreApplication::instance()->installEventFilter(this);
}

void Dispatcher::dispatch(QObject& source, const Handler& handler, OnError onError) {
  if (ending_) {
    return;
  }
  if (depth_ > 0) {
    runLater(source, handler, onError);
  } else {
    run(handler, onError);
  }
}

void Dispatcher::dispatchPress(QObject& button, const Handler& handler, Presses presses) {
  if (presses == Presses::PileUp) {
    if (depth_ > 0 || !delivering_ || pressed_.insert(&button).second) {
      dispatch(button, handler);
    }
  } else if (depth_ > 0 && !ending_) {
    // Input is held back, but a screen reader presses without any.
    due_.push_back({&button, handler, OnError::GoOn});
  } else {
    dispatch(button, handler);
  }
}

void Dispatcher::run(const Handler& handler, OnError onError) {
  const Busy busy(*this);
  try {
    handler();
  } catch (const RuntimeError& error) {
    fail(error.what(), onError);
  } catch (const std::exception& error) {
    fail("The command failed unexpectedly: " + std::string(error.what()), onError);
  } catch (...) {
    fail("The command failed unexpectedly.", onError);
  }
}

void Dispatcher::runLater(QObject& source, const Handler& handler, OnError onError) {
  const auto same =
      std::find_if(due_.begin(), due_.end(), [&](const Due& due) { return due.source == &source; });
  if (same == due_.end()) {
    due_.push_back({&source, handler, onError});
  } else {
    *same = {&source, handler, onError};
  }
}

void Dispatcher::fail(const std::string& text, OnError onError) {
  try {
    report_(text);
  } catch (const std::exception&) {
    // Nothing is left that could be told to anyone.
    onError = OnError::EndProgram;
  }
  if (onError == OnError::EndProgram) {
    end(1);
  }
}

void Dispatcher::end(int exitCode) {
  ending_ = true;
  exitCode_ = std::max(exitCode_, exitCode);
  if (depth_ == 0) {
    QCoreApplication::exit(exitCode_);
  }
}

void Dispatcher::released() {
  ++batch_;
  if (ending_) {
    QCoreApplication::exit(exitCode_);
  } else if (!delivering_ && isAnythingDue()) {
    // The handler's own event has to be over first.
    QMetaObject::invokeMethod(
        this, [this] { deliver(); }, Qt::QueuedConnection);
  }
}

bool Dispatcher::isAnythingDue() {
  down_.missedReleases(
      [this](QObject& window, const QEvent& release) { held_.hold(window, release, batch_); });
  return !due_.empty() || !held_.empty();
}

void Dispatcher::deliver() {
  if (depth_ > 0 || delivering_) {
    return;
  }
  const QScopedValueRollback<bool> delivering(delivering_, true);
  while (!ending_ && isAnythingDue()) {
    deliverNext();
  }
  pressed_.clear();
}

void Dispatcher::deliverNext() {
  if (!due_.empty()) {
    const Due due = std::move(due_.front());
    due_.pop_front();
    if (due.source) {
      run(due.handler, due.onError);
    }
    return;
  }
  if (std::exchange(deliveredBatch_, held_.firstBatch()) != held_.firstBatch()) {
    pressed_.clear();
  }
  held_.resendFirst();
}

bool Dispatcher::eventFilter(QObject* receiver, QEvent* event) {
  if (!HeldInput::isInput(*event)) {
    return false;
  }
  if (held_.announcesDoubleClick() && receiver->isWidgetType() &&
      event->type() == QEvent::MouseButtonPress) {
    return true;
  }
  const bool comesFromThePerson = depth_ > 0 || !delivering_;
  if (comesFromThePerson && receiver->isWindowType() && !belongsToModalWindow(*receiver)) {
    down_.see(*receiver, *event);
  }
  // Input that comes before the delivery has begun must not overtake what is held.
  const bool holding = depth_ > 0 || (!delivering_ && !held_.empty());
  if (!holding || (!receiver->isWidgetType() && !receiver->isWindowType())) {
    return false;
  }
  if (belongsToModalWindow(*receiver)) {
    return false;
  }
  held_.hold(*receiver, *event, batch_);
  return true;
}

}  // namespace quintara
