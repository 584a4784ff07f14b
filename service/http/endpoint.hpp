#pragma once

#include <functional>
#include <string>

#include "service/system/file_handle.hpp"

namespace quintara::quotes {

/// What is served on one listening socket.
struct Endpoint {
  /// The reply body for a raw request target; throws Refusal. Called by several threads at once.
  using Answer = std::function<std::string(const std::string& target)>;

  /// On a port every user and every web page of the computer can ask, so that requests are looked
  /// at more closely; on a socket in the file system only the own user can.
  enum class Kind { Port, OwnUser };

  Kind kind;
  FileHandle listening;  ///< does not block
  std::string path;      ///< the only one that is served
  Answer answer;
};

}  // namespace quintara::quotes
