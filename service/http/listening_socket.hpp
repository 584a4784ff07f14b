#pragma once

#include <string>

#include "service/system/file_handle.hpp"

namespace quintara::quotes {

/// The result of a system call, or std::system_error that begins with `what` when it failed.
int checked(int result, const std::string& what);

/// A socket that listens on this port of 127.0.0.1, 0 for any free one. Throws PortTaken, or
/// std::system_error when the port cannot be had for another reason. It does not block.
FileHandle listenOnLoopback(int port);

int portOf(const FileHandle& socket);             ///< 0 if it has none
std::string addressOf(const FileHandle& socket);  ///< with the port, or a file's name

}  // namespace quintara::quotes
