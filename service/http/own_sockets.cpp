#include "service/http/own_sockets.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "service/http/listening_socket.hpp"

namespace quintara::quotes {

OwnSockets::OwnSockets(std::string folder) : folder_(std::move(folder)) {
  const std::string path = folder_ + "/service.lock";
  constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW;
  lock_ =
      FileHandle(checked(::open(path.c_str(), kFlags, S_IRUSR | S_IWUSR), "cannot open " + path));
  const int result = ::flock(lock_.get(), LOCK_EX | LOCK_NB);
  if (result < 0 && errno == EWOULDBLOCK) {
    throw AlreadyRunning("another quote service of yours runs already; it holds " + path);
  }
  checked(result, "cannot lock " + path);
}

OwnSockets::~OwnSockets() {
  for (const std::string& path : paths_) {
    ::unlink(path.c_str());
  }
}

FileHandle OwnSockets::listen(const std::string& name) {
  const std::string path = folder_ + "/" + name;
  const std::string failure = "cannot listen on " + path;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    throw std::system_error(ENAMETOOLONG, std::generic_category(), failure);
  }
  std::memcpy(address.sun_path, path.c_str(), path.size());
  FileHandle handle(
      checked(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0), failure));
  ::unlink(path.c_str());
  checked(::bind(handle.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
          failure);
  paths_.push_back(path);
  checked(::chmod(path.c_str(), S_IRUSR | S_IWUSR), failure);
  checked(::listen(handle.get(), SOMAXCONN), failure);
  return handle;
}

}  // namespace quintara::quotes
