#pragma once

#include <QObject>
#include <QPointer>
#include <deque>
#include <functional>
#include <set>
#include <string>

#include "platform/qt/held_input.hpp"
#include "platform/qt/pressed_buttons.hpp"

namespace quintara {

/// Runs the program's handlers, one at a time, and is where errors end that no handler caught: it
/// reports their text, and the program goes on or ends.
///
/// While a handler runs, input to the program's windows is held back; it is delivered in order when
/// the handler has ended. A handler that is due meanwhile (a resize) runs afterwards, once.
class Dispatcher final : public QObject {
 public:
  enum class OnError { GoOn, EndProgram };
  using Handler = std::function<void()>;
  using Report = std::function<void(const std::string& text)>;

  /// Needs the application object. `report` shows an error's text and returns when it was read.
  explicit Dispatcher(Report report);

  void setReport(Report report) { report_ = std::move(report); }

  /// Runs the handler for something the user did with `source`; later, if one is running already.
  void dispatch(QObject& source, const Handler& handler, OnError onError = OnError::GoOn);
  /// The same for a push button. Its presses during a handler are handled one by one, or those of
  /// one handler's time count once.
  enum class Presses { Count, PileUp };
  void dispatchPress(QObject& button, const Handler& handler, Presses presses);

  /// Ends the program as soon as no handler is running; what is held back is dropped.
  void end(int exitCode);
  [[nodiscard]] bool isEnding() const { return ending_; }
  [[nodiscard]] int exitCode() const { return exitCode_; }

  /// No handler starts while one of these lives.
  class Busy {
   public:
    explicit Busy(Dispatcher& dispatcher) : dispatcher_(dispatcher) { ++dispatcher_.depth_; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    ~Busy() {
      if (--dispatcher_.depth_ == 0) {
        dispatcher_.released();
      }
    }

   private:
    Dispatcher& dispatcher_;
  };

  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  struct Due {
    QPointer<QObject> source;
    Handler handler;
    OnError onError;
  };
  void run(const Handler& handler, OnError onError);
  void runLater(QObject& source, const Handler& handler, OnError onError);
  void fail(const std::string& text, OnError onError);
  void released();
  void deliver();
  void deliverNext();
  [[nodiscard]] bool isAnythingDue();

  Report report_;
  int depth_ = 0;
  unsigned batch_ = 0;  ///< counts the times that handlers came to an end
  bool delivering_ = false;
  bool ending_ = false;
  int exitCode_ = 0;
  std::deque<Due> due_;
  HeldInput held_;
  PressedButtons down_;
  unsigned deliveredBatch_ = 0;
  std::set<const QObject*> pressed_;  ///< buttons pressed in the batch that is being delivered
};

}  // namespace quintara
