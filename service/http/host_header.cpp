#include "service/http/host_header.hpp"

#include "service/text/loopback.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {

bool namesThisComputer(std::string_view hostHeader) {
  std::string_view host = hostHeader;
  const auto colon = host.rfind(':');
  if (colon != host.npos && parseCount(host.substr(colon + 1))) {
    host = host.substr(0, colon);
  }
  return isLoopback(host) || host == "[::1]";
}

}  // namespace quintara::quotes
