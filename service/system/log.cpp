#include "service/system/log.hpp"

#include <unistd.h>

#include <chrono>
#include <mutex>
#include <utility>
#include <vector>

#include "service/system/repeats.hpp"

namespace quintara::quotes {
namespace {

// One call for a line keeps the lines of several threads apart; a closed standard error is no
// reason to stop serving.
void toStandardError(const std::string& line) {
  const auto written = ::write(STDERR_FILENO, line.data(), line.size());
  static_cast<void>(written);
}

}  // namespace

std::optional<LogLevel> logLevelNamed(std::string_view name) {
  if (name == "error") {
    return LogLevel::Error;
  }
  if (name == "warning") {
    return LogLevel::Warning;
  }
  if (name == "info") {
    return LogLevel::Info;
  }
  if (name == "debug") {
    return LogLevel::Debug;
  }
  return std::nullopt;
}

// What all copies of a log have in common.
struct Log::Shared {
  explicit Shared(Sink to) : sink(std::move(to)) {}
  Shared(const Shared&) = delete;
  Shared& operator=(const Shared&) = delete;
  ~Shared() { write(repeats.countsAt(Repeats::Time::max())); }

  void write(const std::vector<std::string>& texts) const {
    for (const std::string& text : texts) {
      sink("quintara-quotes: " + text + "\n");
    }
  }

  const Sink sink;
  std::mutex mutex;  // of the repeats and the order of lines
  Repeats repeats;
};

Log::Log(LogLevel level) : Log(level, toStandardError) {}

Log::Log(LogLevel level, Sink sink)
    : level_(level), shared_(std::make_shared<Shared>(std::move(sink))) {}

void Log::write(LogLevel level, const std::string& text) const {
  if (level > level_) {
    return;
  }
  const std::lock_guard lock(shared_->mutex);
  shared_->write(level == LogLevel::Debug
                     ? std::vector{text}
                     : shared_->repeats.passing(text, std::chrono::steady_clock::now()));
}

}  // namespace quintara::quotes
