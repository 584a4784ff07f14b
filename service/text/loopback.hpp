#pragma once

#include <string_view>

namespace quintara::quotes {

/// Whether a host, without a port, is a name or an IPv4 address of this computer alone.
bool isLoopback(std::string_view host);

}  // namespace quintara::quotes
