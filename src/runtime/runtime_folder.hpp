#pragma once

#include <sys/types.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace quintara {

/// One sentence that names the folder and says why it cannot be used.
struct RuntimeFolderUnusable : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The longest name of a file in the folder, in bytes: what a socket's address has room for.
constexpr std::size_t kLongestRuntimeName = 24;

/// The user's own folder for sockets, locks and logs, which nobody else can open or replace. It is
/// made if it is not there. Throws RuntimeFolderUnusable.
std::string runtimeFolder();

/// Where it may lie, best first; `session` is the value of XDG_RUNTIME_DIR, or null.
std::vector<std::string> runtimeFolderPlaces(const char* session, uid_t user);

/// The first of these folders whose parent is there, made and checked as runtimeFolder() does.
std::string firstOwnFolder(const std::vector<std::string>& places);

}  // namespace quintara
