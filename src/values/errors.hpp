#pragma once

#include <new>
#include <stdexcept>
#include <string>

namespace quintara {

/// What went wrong in a handler. Each kind has one fixed sentence for the user.
enum class ErrorKind {
  Overflow,
  TypeMismatch,
  SubscriptOutOfRange,
  DivisionByZero,
  ObjectNotSet,
  InvalidSize,
  TransferFailed,
  LaunchFailed,
};

/// The fixed sentence shown for a kind of error.
const char* textOf(ErrorKind kind);

/// The one run-time error type. Policies that trap errors trap this and the lack of memory.
class RuntimeError : public std::runtime_error {
 public:
  /// what() is the kind's fixed sentence.
  explicit RuntimeError(ErrorKind kind);
  /// what() is `description`, for failures that only the platform can describe.
  RuntimeError(ErrorKind kind, const std::string& description);

  [[nodiscard]] ErrorKind kind() const { return kind_; }

 private:
  ErrorKind kind_;
};

/// The policy that traps every error: the action runs as far as it gets, and what it threw is
/// forgotten, but for an exception that is no run-time error, which goes to the caller.
template <class Action>
void trapErrors(Action&& action) try {
  action();
} catch (const RuntimeError&) {
} catch (const std::bad_alloc&) {
}

}  // namespace quintara
