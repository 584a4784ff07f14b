#include "values/errors.hpp"

namespace quintara {

const char* textOf(ErrorKind kind) {
  switch (kind) {
    case ErrorKind::Overflow:
      return "Overflow: a number is too large to be worked with.";
    case ErrorKind::TypeMismatch:
      return "Type mismatch: a text that should be a number is not one.";
    case ErrorKind::SubscriptOutOfRange:
      return "Subscript out of range: an entry was asked for that does not exist.";
    case ErrorKind::DivisionByZero:
      return "Division by zero.";
    case ErrorKind::ObjectNotSet:
      return "Object not set: there is no price series yet.";
    case ErrorKind::InvalidSize:
      return "Invalid size: a control cannot have a negative width or height.";
    case ErrorKind::TransferFailed:
      return "The data could not be transferred.";
    case ErrorKind::LaunchFailed:
      return "The program could not be started.";
  }
  return "Unknown error.";
}

RuntimeError::RuntimeError(ErrorKind kind) : RuntimeError(kind, textOf(kind)) {}

RuntimeError::RuntimeError(ErrorKind kind, const std::string& description)
    : std::runtime_error(description), kind_(kind) {}

}  // namespace quintara
