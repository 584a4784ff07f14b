#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <utility>

namespace quintara {

/// What a person did while a handler was running, in order. Of pointer moves that follow each other
/// only the last is kept. Bounded: a person who goes on for that long is not heard any more, but
/// whatever is pressed is let go of.
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
  /// Whether a press is being handed out that only announces a double click. The window needs it,
  /// but no widget gets such a press.
  [[nodiscard]] bool announcesDoubleClick() const { return announcing_; }

 private:
  struct Held {
    QPointer<QObject> receiver;
    std::function<std::unique_ptr<QEvent>()> event;
    unsigned batch;
    QEvent::Type type;
    Qt::MouseButtons movedWith;  ///< of a move
    bool announcesDoubleClick = false;
  };
  using Pressed = std::pair<bool, int>;  ///< whether it is a key, and which key or button

  bool joinsLast(const Held& move) const;
  bool hasRoomFor(const QEvent& event);

  std::deque<Held> held_;
  std::set<Pressed> dropped_;  ///< presses that there was no room for
  bool announcing_ = false;
};

}  // namespace quintara
