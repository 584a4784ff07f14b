#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quintara::quotes {

enum class LogLevel { Error, Warning, Info, Debug };

std::optional<LogLevel> logLevelNamed(std::string_view name);

/// Lines for the person who runs the service; the same one once a minute, and how often it came,
/// debugging excepted. May be used from several threads at once; copies are one log. Whoever writes
/// text that came from outside escapes it first.
class Log {
 public:
  using Sink = std::function<void(const std::string& line)>;

  explicit Log(LogLevel level);  ///< to standard error
  Log(LogLevel level, Sink sink);
  /// For whoever tells the same in another way.
  static Log none() {
    return Log(LogLevel::Error, [](const std::string&) {});
  }

  void error(const std::string& text) const { write(LogLevel::Error, "error: " + text); }
  void warning(const std::string& text) const { write(LogLevel::Warning, "warning: " + text); }
  void info(const std::string& text) const { write(LogLevel::Info, text); }
  /// What does not stop the service but its owner has to hear of, at every level. The line begins
  /// with `about`, which whoever started the service looks for.
  void notice(const std::string& about, const std::string& text) const {
    write(LogLevel::Error, about + ": " + text);
  }
  void debug(const std::string& text) const { write(LogLevel::Debug, text); }

 private:
  void write(LogLevel level, const std::string& text) const;

  struct Shared;
  LogLevel level_;
  std::shared_ptr<Shared> shared_;
};

}  // namespace quintara::quotes
