#pragma once

#include <string_view>

namespace quintara::quotes {

/// Whether the value of a Host header names this computer itself, with or without a port. A web
/// page whose name was made to resolve to 127.0.0.1 sends its own name instead.
bool namesThisComputer(std::string_view hostHeader);

}  // namespace quintara::quotes
