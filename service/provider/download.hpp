#pragma once

#include <chrono>
#include <filesystem>
#include <stop_token>
#include <string>

namespace quintara::quotes {

/// What came back. No part of it shows the address.
struct Download {
  long status = 0;  ///< of HTTP; 0 if nothing usable came
  std::string body;
  std::string host;     ///< that was asked last, after redirects perhaps
  std::string problem;  ///< one line in our words; empty if a reply came, whatever its status
  std::string detail;   ///< of the problem, in words from outside
};

struct DownloadRequest {
  std::string url;
  std::string header;  ///< one more request header; empty for none
  std::filesystem::path caFile;
};

/// Fetches over HTTP or HTTPS, through the proxy that the environment names. Certificates are
/// verified. Follows a few redirects, never from HTTPS to HTTP or from elsewhere to this computer,
/// and takes the header along only to the same server. At most 8 MB. Gives up at `deadline`, and
/// soon after `stop` was requested.
Download download(DownloadRequest request, std::chrono::steady_clock::time_point deadline,
                  const std::stop_token& stop);

}  // namespace quintara::quotes
