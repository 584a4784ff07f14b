#include "runtime/runtime_folder.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace quintara {
namespace {

constexpr int kFolderOnly = O_PATH | O_DIRECTORY | O_CLOEXEC;

struct Opened {
  explicit Opened(int folder) : descriptor(folder) {}
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  ~Opened() {
    if (descriptor >= 0) {
      ::close(descriptor);
    }
  }

  const int descriptor;
};

[[noreturn]] void refuse(const std::string& folder, const std::string& reason) {
  throw RuntimeFolderUnusable("cannot use the folder " + folder + ": " + reason);
}

[[noreturn]] void refuse(const std::string& folder, int error) {
  refuse(folder, std::generic_category().message(error));
}

// Whoever can write to the parent could put another folder into our folder's place. In a sticky one
// only the folder's owner can.
void checkParent(const Opened& parent, const std::string& name, const std::string& folder) {
  struct stat found {};
  if (::fstat(parent.descriptor, &found) != 0) {
    refuse(folder, errno);
  }
  const bool sticky = (found.st_mode & S_ISVTX) != 0;
  if (found.st_uid != ::geteuid() && !(sticky && found.st_uid == 0)) {
    refuse(folder, name + " belongs to another user, and XDG_RUNTIME_DIR should name one of yours");
  }
  if (!sticky && (found.st_mode & (S_IWGRP | S_IWOTH)) != 0) {
    refuse(folder, "others can write to " + name + ", which chmod go-w would change");
  }
}

void checkOwn(const Opened& own, const std::string& folder) {
  struct stat found {};
  if (own.descriptor < 0 && errno == ENOTDIR) {
    refuse(folder, "it is not a folder");
  }
  if (own.descriptor < 0 || ::fstat(own.descriptor, &found) != 0) {
    refuse(folder, errno);
  }
  if (found.st_uid != ::geteuid()) {
    refuse(folder, "it belongs to another user");
  }
  if ((found.st_mode & ACCESSPERMS) != S_IRWXU) {
    refuse(folder, "it is not open to its owner alone, which chmod 700 would change");
  }
}

// One step at a time below an open parent, so that nothing is exchanged between two of them.
void makeIn(const Opened& parent, const std::string& name, const std::string& folder) {
  if (::mkdirat(parent.descriptor, name.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
    refuse(folder, errno);
  }
  checkOwn(Opened(::openat(parent.descriptor, name.c_str(), kFolderOnly | O_NOFOLLOW)), folder);
}

}  // namespace

std::vector<std::string> runtimeFolderPlaces(const char* session, uid_t user) {
  const std::string number = std::to_string(user);
  std::vector<std::string> places = {"/run/user/" + number + "/quintara",
                                     "/tmp/quintara-" + number};
  if (session != nullptr && session[0] == '/') {
    places.insert(places.begin(), std::string(session) + "/quintara");
  }
  return places;
}

std::string firstOwnFolder(const std::vector<std::string>& places) {
  for (const std::string& folder : places) {
    const std::filesystem::path path = folder;
    const std::string name = path.parent_path();
    const Opened parent(::open(name.c_str(), kFolderOnly));
    if (parent.descriptor < 0 && errno == ENOENT) {
      continue;  // also what a session that has ended leaves in the environment
    }
    if (parent.descriptor < 0) {
      refuse(folder, errno);
    }
    checkParent(parent, name, folder);
    if (folder.size() + 1 + kLongestRuntimeName >= sizeof(sockaddr_un::sun_path)) {
      refuse(folder, "its name is too long for the address of a socket");
    }
    makeIn(parent, path.filename(), folder);
    return folder;
  }
  throw RuntimeFolderUnusable("there is no folder to keep sockets in, not even /tmp");
}

std::string runtimeFolder() {
  return firstOwnFolder(runtimeFolderPlaces(std::getenv("XDG_RUNTIME_DIR"), ::geteuid()));
}

}  // namespace quintara
