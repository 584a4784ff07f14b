#pragma once

#include <optional>
#include <string>

namespace quintara {

/// Where an address leads.
struct UrlParts {
  std::string scheme;  ///< http or https
  std::string host;
  std::string port;  ///< the usual one of the scheme if none is given

  bool operator==(const UrlParts&) const = default;
};

/// No value for what is no address, has another scheme, or names a user. Throws
/// TransferFailed when libcurl cannot be used.
std::optional<UrlParts> urlParts(const std::string& url);

}  // namespace quintara
