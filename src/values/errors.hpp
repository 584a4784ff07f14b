#pragma once

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

/// The one run-time error type: policies that trap errors trap this type and nothing else.
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

}  // namespace quintara
