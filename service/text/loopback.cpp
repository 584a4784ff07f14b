#include "service/text/loopback.hpp"

#include <arpa/inet.h>

#include <string>

#include "service/text/text.hpp"

namespace quintara::quotes {

bool isLoopback(std::string_view host) {
  in_addr address{};
  if (::inet_pton(AF_INET, std::string(host).c_str(), &address) == 1) {
    return ntohl(address.s_addr) >> 24U == 127;
  }
  return equalIgnoringCase(host, "localhost");
}

}  // namespace quintara::quotes
