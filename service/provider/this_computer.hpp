#pragma once

#include <string>

namespace quintara::quotes {

/// Whether a connection to the host of an address, as libcurl writes it, stays on this computer, in
/// so far as the name shows it.
bool leadsToThisComputer(const std::string& host);

}  // namespace quintara::quotes
