#include "transfer/this_computer.hpp"

#include <netdb.h>
#include <netinet/in.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <memory>
#include <string_view>

namespace quintara {

namespace {

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return text;
}

std::string ownName() {
  std::array<char, HOST_NAME_MAX + 1> name{};
  return ::gethostname(name.data(), name.size() - 1) == 0 ? lowerCase(name.data()) : "";
}

}  // namespace

// A socket can only be bound to an address of its own computer.
bool isThisComputer(const sockaddr& address, socklen_t length) {
  sockaddr_in6 anyPort{};  // those of IPv4 are shorter, their port stands at the same place
  std::memcpy(&anyPort, &address, std::min<std::size_t>(length, sizeof anyPort));
  anyPort.sin6_port = 0;
  const int probe = ::socket(address.sa_family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (probe < 0) {
    return errno != EAFNOSUPPORT;  // if in doubt it is
  }
  const bool bound = ::bind(probe, reinterpret_cast<const sockaddr*>(&anyPort), length) == 0;
  ::close(probe);
  return bound;
}

bool leadsToThisComputer(const std::string& host) {
  const std::string number =
      host.starts_with('[') ? host.substr(1, host.find_first_of("%]") - 1) : host;
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICHOST;  // asks nobody
  addrinfo* found = nullptr;
  if (!number.empty() && ::getaddrinfo(number.c_str(), nullptr, &hints, &found) == 0) {
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(found, freeaddrinfo);
    return isThisComputer(*found->ai_addr, found->ai_addrlen);
  }
  std::string name = lowerCase(host);
  if (name.ends_with('.')) {
    name.pop_back();
  }
  return name == "localhost" || name.ends_with(".localhost") ||
         (!name.empty() && name == ownName());
}

}  // namespace quintara
