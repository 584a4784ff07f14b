#include "service/http/host_header.hpp"

#include <arpa/inet.h>

#include <string>

#include "service/text/text.hpp"

namespace quintara::quotes {

bool namesThisComputer(std::string_view hostHeader) {
  std::string_view host = hostHeader;
  const auto colon = host.rfind(':');
  if (colon != host.npos && parseCount(host.substr(colon + 1))) {
    host = host.substr(0, colon);
  }
  in_addr address{};
  if (::inet_pton(AF_INET, std::string(host).c_str(), &address) == 1) {
    return ntohl(address.s_addr) >> 24U == 127;
  }
  return equalIgnoringCase(host, "localhost") || host == "[::1]";
}

}  // namespace quintara::quotes
