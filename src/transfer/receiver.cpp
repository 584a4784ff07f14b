#include "transfer/receiver.hpp"

#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <new>

#include "transfer/this_computer.hpp"

namespace quintara {

namespace {

std::string portOf(const sockaddr& address) {
  in_port_t port = 0;  // at the same place in those of IPv6
  std::memcpy(&port, address.sa_data, sizeof port);
  return std::to_string(ntohs(port));
}

bool proxyIsNamed() {
  constexpr std::array kNames{"http_proxy", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"};
  return std::any_of(kNames.begin(), kNames.end(),
                     [](const char* name) { return std::getenv(name) != nullptr; });
}

}  // namespace

Receiver::Receiver(const TransferRequest& request)
    : limits_(request.limits),
      redirected_(request.redirected),
      to_(urlParts(request.url)),
      mayBeProxied_(to_ && !leadsToThisComputer(to_->host) && proxyIsNamed()),
      tooLarge_("the reply is larger than " + std::to_string(limits_.bytes >> 20U) + " MB") {}

std::size_t Receiver::refuse(const char* why) {
  refusal_ = why;
  return 0;
}

std::size_t Receiver::takeBody(char* data, std::size_t size, std::size_t count, void* receiver) {
  auto& self = *static_cast<Receiver*>(receiver);
  const std::size_t length = size * count;
  if (length > self.limits_.bytes - self.body_.size()) {
    return self.refuse(self.tooLarge_.c_str());
  }
  self.lines_ += static_cast<std::size_t>(std::count(data, data + length, '\n'));
  if (self.lines_ > self.limits_.lines) {
    return self.refuse("the reply has too many lines");
  }
  try {
    self.body_.append(data, length);
  } catch (const std::bad_alloc&) {
    return self.refuse("there is not enough memory for the reply");
  }
  return length;
}

// Trailers, too: libcurl itself keeps them without any limit.
std::size_t Receiver::takeHeader(char* /*data*/, std::size_t size, std::size_t count,
                                 void* receiver) {
  auto& self = *static_cast<Receiver*>(receiver);
  self.headerBytes_ += size * count;
  return self.headerBytes_ > kMostHeaderBytes ? self.refuse("the headers are larger than 256 KB")
                                              : size * count;
}

// Sees the address before anything is sent there. A connection to another port than the one that is
// asked for is to a proxy; one to the same port may be, which then is no proof that the reply is
// from this computer.
curl_socket_t Receiver::open(void* receiver, curlsocktype /*purpose*/, curl_sockaddr* address) {
  auto& self = *static_cast<Receiver*>(receiver);
  const bool local = address->family == AF_UNIX;
  const bool direct = !local && self.to_ && self.to_->port == portOf(address->addr);
  const bool here = local || (direct && isThisComputer(address->addr, address->addrlen));
  self.here_ = self.here_ && here && !self.mayBeProxied_;
  if (here && self.redirected_) {
    self.refuse("a redirect to this computer");
    return CURL_SOCKET_BAD;
  }
  return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

}  // namespace quintara
