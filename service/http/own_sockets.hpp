#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "service/system/file_handle.hpp"

namespace quintara::quotes {

/// Another quote service of this user runs.
struct AlreadyRunning : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The sockets of the one service that a user runs, in a folder that nobody else can open. A lock
/// on the file service.lock tells that it runs; a killed service leaves its sockets, but no lock.
class OwnSockets {
 public:
  /// Takes the lock. Throws AlreadyRunning, or std::system_error when it cannot be had.
  explicit OwnSockets(std::string folder);
  ~OwnSockets();  ///< removes the sockets, then gives the lock up
  OwnSockets(const OwnSockets&) = delete;
  OwnSockets& operator=(const OwnSockets&) = delete;

  /// A socket of this name that listens and does not block, in the place of what lies there. Throws
  /// std::system_error.
  FileHandle listen(const std::string& name);

 private:
  const std::string folder_;
  FileHandle lock_;
  std::vector<std::string> paths_;
};

}  // namespace quintara::quotes
