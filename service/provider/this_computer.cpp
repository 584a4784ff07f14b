#include "service/provider/this_computer.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <string_view>

#include "service/text/loopback.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {

bool leadsToThisComputer(const std::string& host) {
  in6_addr address{};
  if (!host.empty() && host.front() == '[' &&
      ::inet_pton(AF_INET6, host.substr(1, host.find_first_of("%]") - 1).c_str(), &address) == 1) {
    const auto first = address.s6_addr[12];
    return IN6_IS_ADDR_LOOPBACK(&address) || IN6_IS_ADDR_UNSPECIFIED(&address) ||
           (IN6_IS_ADDR_V4MAPPED(&address) && (first == 127 || first == 0));
  }
  std::string_view name = host;
  name.remove_suffix(!name.empty() && name.back() == '.' ? 1 : 0);
  constexpr std::string_view kBelow = ".localhost";
  const auto rest = name.substr(name.size() - std::min(name.size(), kBelow.size()));
  return isLoopback(name) || name == "0.0.0.0" || equalIgnoringCase(rest, kBelow);
}

}  // namespace quintara::quotes
