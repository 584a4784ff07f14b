#pragma once

#include <stdexcept>
#include <string>

namespace quintara::quotes {

/// A request that gets an error status and one line that says why.
struct Refusal : std::runtime_error {
  Refusal(int httpStatus, const std::string& reason)
      : std::runtime_error(reason), status(httpStatus) {}
  int status;
};

}  // namespace quintara::quotes
