#pragma once

#include <functional>
#include <string>

#include "service/system/file_handle.hpp"

namespace quintara::quotes {

/// What is served on one listening socket.
struct Endpoint {
  /// The reply body for a raw request target; throws Refusal. Called by several threads at once.
  using Answer = std::function<std::string(const std::string& target)>;

  FileHandle listening;  ///< does not block
  std::string path;      ///< the only one that is served
  Answer answer;
};

}  // namespace quintara::quotes
