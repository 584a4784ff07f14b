#pragma once

#include <stdexcept>
#include <string>

namespace quintara::quotes {

/// The port belongs to somebody else already.
struct PortTaken : std::runtime_error {
  explicit PortTaken(int port)
      : std::runtime_error("port " + std::to_string(port) + " on 127.0.0.1 is taken already") {}
};

}  // namespace quintara::quotes
