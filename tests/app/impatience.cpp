// A trader without patience: random input to the real window, also while downloads run and messages
// stand. Usage: quintara-impatience [--seed N] [--actions N]
#include <unistd.h>

#include <QRegularExpression>
#include <QTimer>
#include <cstdio>
#include <random>

#include "support/faults.hpp"
#include "support/real_program.hpp"

namespace quintara::test {
namespace {

constexpr std::size_t kMostGrowthKilobytes = 32 * std::size_t{1024};

class Trader {
 public:
  Trader(unsigned seed, int actions) : random_(seed), left_(actions) {}
  /// One run of the program, until it is closed or ends by itself.
  void useProgram() {
    RealProgram program(std::chrono::milliseconds(300));
    program_ = &program;
    program.asksForReal = true;
    program.services.date =
        std::chrono::sys_days(program.services.date) + std::chrono::days(below(7));
    QObject untilItsEnd;
    if (below(2) == 0) RealProgram::setText("txtTicker", "xyz");
    serveAnything();
    actSoon(untilItsEnd);
    const bool ended = program.application.run() != 0;
    check(program.messages, ended);
    if (ended && !RealProgram::shown("lblLow").empty()) fail("ended over a readout");
  }
  [[nodiscard]] int left() const { return left_; }
  int whileWaiting = 0;

 private:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  [[noreturn]] void fail(const std::string& what) const {
    std::printf("FAILED with %d actions left: %s\n", left_, what.c_str());
    std::_Exit(1);
  }
  void check(const std::vector<std::string>& shown, bool ended) const {
    static const QRegularExpression kNamed(
        "^48 Quintara: Please enter Ticker Symbol$|^16 Data retrieval error: Error occurred while |"
        "^16 Quintara: (Overflow|Type mismatch|Subscript out of|Division by zero|Object not set)");
    for (const std::string& message : shown)
      if (!kNamed.match(QString::fromStdString(message)).hasMatch()) fail(message);
    const std::string last = shown.empty() ? "ended silently" : shown.back();
    if (ended && last.find("Type mismatch") == std::string::npos) fail(last);
  }

  /// A timer each: one that repeats would be silent in the event loops that an action starts.
  void actSoon(QObject& program) {
    QTimer::singleShot(1, &program, [this, &program] {
      actSoon(program);
      act();
    });
  }
  /// Not within another action, but for one that made the program wait.
  void act() {
    if (depth_ >= (program_->isWaiting() ? 2 : 1)) return;
    const QScopedValueRollback<int> deeper(depth_, depth_ + 1);
    whileWaiting += program_->isWaiting() ? 1 : 0;
    alarm(60);  // a hang ends here
    QWidget& form = RealProgram::form();
    QWidget* const box = QApplication::activeModalWidget();
    --left_;
    // Nobody closes a window behind a message.
    if (box != nullptr && (left_ <= 0 || below(3) == 0)) {
      QTest::keyClick(box->windowHandle(), Qt::Key_Return);
    } else if (left_ <= 0 || (box == nullptr && below(300) == 0)) {
      form.close();
    } else if (QWidget* list = QApplication::activePopupWidget(); list != nullptr) {
      QTest::mouseClick(list->windowHandle(), Qt::LeftButton, {}, in(*list));
    } else {
      disturb(form);
    }
  }
  QPoint in(const QWidget& widget) {
    return {below(std::max(1, widget.width())), below(std::max(1, widget.height()))};
  }
  /// Somewhere on some control, or on the chart.
  QPoint somewhere(const QWidget& form, bool onChart = false) {
    const auto all = form.findChildren<QWidget*>();
    const QWidget* const control =
        onChart ? &RealProgram::widget("picChart") : all[below(static_cast<int>(all.size()))];
    return control->mapTo(&form, in(*control));
  }
  void disturb(QWidget& form) {
    constexpr Qt::MouseButton kButtons[] = {Qt::LeftButton, Qt::LeftButton, Qt::RightButton};
    constexpr QSize kSizes[] = {{1, 1}, {330, 50}, {721, 561}, {900, 700}, {4000, 3000}};
    constexpr char kKeys[] = "abc0123456789.,e-+ \t\r\b\x1b";
    QWindow* const window = form.windowHandle();
    const Qt::MouseButton button = kButtons[below(3)];
    switch (below(12)) {
      case 0:
        return RealProgram::click("cmdChart");
      case 1:
        return serveAnything();
      case 2:
        return form.resize(kSizes[below(5)] + QSize(below(20), below(20)));
      case 3:
        return QTest::mouseDClick(window, button, {}, somewhere(form));
      case 4:
      case 5:
        return QTest::keyClick(window, kKeys[below(sizeof kKeys - 1)],
                               below(9) == 0 ? Qt::ControlModifier : Qt::NoModifier);
      case 6:
        return RealProgram::widget("txtTicker").setFocus();
      case 7:
        QTest::mousePress(window, button, {}, somewhere(form, true));
        QTest::mouseMove(window, somewhere(form));
        return QTest::mouseRelease(window, button, {}, somewhere(form));
      case 8:
      case 9:
        return QTest::mouseMove(window, somewhere(form, below(2) == 0));
      default:
        return QTest::mouseClick(window, button, {}, somewhere(form));
    }
  }
  void serveAnything() {
    static const std::vector<Fault> kFaults = faults();
    Fault fault = kFaults[random_() % kFaults.size()];
    if (below(3) == 0) fault.table = ok(table(below(400)));
    fault.table.pauseMs = fault.quote.pauseMs = below(100);
    program_->server.serve(fault.table, fault.quote);
  }

  std::mt19937 random_;
  int left_;
  int depth_ = 0;
  RealProgram* program_ = nullptr;
};

int argument(const QStringList& arguments, const char* name, int otherwise) {
  const auto at = arguments.indexOf(name);
  return at < 0 ? otherwise : arguments.value(at + 1).toInt();
}

int run(const QStringList& arguments) {
  const int seed = argument(arguments, "--seed", static_cast<int>(std::random_device()() >> 1));
  const int actions = argument(arguments, "--actions", 10'000);
  std::printf("quintara-impatience --seed %d --actions %d\n", seed, actions);
  Trader trader(static_cast<unsigned>(seed), actions);
  std::vector<std::size_t> resident;
  while (trader.left() > 0) {
    trader.useProgram();
    const int done = 4 * (actions - trader.left()) / actions;
    if (done > static_cast<int>(resident.size())) resident.push_back(memoryKilobytes("VmRSS:"));
  }
  std::printf("%d actions during waits\n", trader.whileWaiting);
  for (const std::size_t kilobytes : resident) std::printf("resident: %zu KB\n", kilobytes);
  return resident.back() < resident.front() + kMostGrowthKilobytes ? 0 : 1;
}

}  // namespace
}  // namespace quintara::test

int main(int argc, char** argv) {
  setvbuf(stdout, nullptr, _IOLBF, 0);
  return quintara::test::run({argv, argv + argc});
}
