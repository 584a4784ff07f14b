#include "service/system/log.hpp"

#include <unistd.h>

#include <utility>

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

Log::Log(LogLevel level) : Log(level, toStandardError) {}

Log::Log(LogLevel level, Sink sink) : level_(level), sink_(std::move(sink)) {}

void Log::write(LogLevel level, const std::string& text) const {
  if (level <= level_) {
    sink_("quintara-quotes: " + text + "\n");
  }
}

}  // namespace quintara::quotes
