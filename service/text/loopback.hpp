#pragma once

#include <string>
#include <string_view>

namespace quintara::quotes {

/// Whether the value of a Host header names this computer itself, with or without a port. A web
/// page whose name was made to resolve to 127.0.0.1 sends its own name instead.
bool namesLoopback(std::string_view host);

/// Whether a connection to the host of an address, as libcurl writes it, stays on this computer, in
/// so far as the name shows it.
bool leadsToThisComputer(const std::string& host);

}  // namespace quintara::quotes
