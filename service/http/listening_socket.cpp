#include "service/http/listening_socket.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

#include "service/http/port_taken.hpp"

namespace quintara::quotes {
namespace {

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

}  // namespace

int checked(int result, const std::string& what) {
  if (result < 0) {
    throw std::system_error(errno, std::generic_category(), what);
  }
  return result;
}

FileHandle listenOnLoopback(int port) {
  const std::string name = "cannot listen on 127.0.0.1:" + std::to_string(port);
  FileHandle handle(
      checked(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0), name));
  const int on = 1;
  // Allows the port of connections that are fading away, not that of a server.
  ::setsockopt(handle.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  const sockaddr_in address = loopback(port);
  int result = ::bind(handle.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
  result = result < 0 ? result : ::listen(handle.get(), SOMAXCONN);
  if (result < 0 && errno == EADDRINUSE) {
    throw PortTaken(port);
  }
  checked(result, name);
  return handle;
}

int portOf(const FileHandle& socket) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  checked(::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size),
          "cannot tell the port");
  return address.sin_family == AF_INET ? ntohs(address.sin_port) : 0;
}

std::string addressOf(const FileHandle& socket) {
  if (const int port = portOf(socket); port != 0) {
    return "127.0.0.1:" + std::to_string(port);
  }
  sockaddr_un address{};
  socklen_t size = sizeof address;
  checked(::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size),
          "cannot tell the address");
  return address.sun_path;
}

}  // namespace quintara::quotes
