#pragma once

#include <sys/socket.h>

#include <string>

namespace quintara {

/// Whether a connection to this address stays on this computer.
bool isThisComputer(const sockaddr& address, socklen_t length);

/// The same of the host of an address, as libcurl writes it, in so far as the name shows it.
bool leadsToThisComputer(const std::string& host);

}  // namespace quintara
