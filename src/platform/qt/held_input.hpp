#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <deque>
#include <functional>
#include <memory>

namespace quintara {

/// What a person did while a handler was running, in order. Of pointer moves that follow each other
/// only the last is kept. Bounded: a person who goes on for that long is not heard any more.
class HeldInput {
 public:
  static bool isInput(const QEvent& event);

  [[nodiscard]] bool empty() const { return held_.empty(); }
  void clear() { held_.clear(); }
  /// Keeps what the event says; `batch` names the handler's run that it came during.
  void hold(QObject& receiver, const QEvent& event, unsigned batch);
  [[nodiscard]] unsigned firstBatch() const { return held_.front().batch; }
  /// Hands the oldest event to its receiver, if that still exists.
  void resendFirst();

 private:
  struct Held {
    QPointer<QObject> receiver;
    std::function<std::unique_ptr<QEvent>()> event;
    unsigned batch;
    Qt::MouseButtons movedWith;  ///< of a move
    bool isMove;
  };

  std::deque<Held> held_;
};

}  // namespace quintara
