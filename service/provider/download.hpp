#pragma once

#include <chrono>
#include <filesystem>
#include <stop_token>
#include <string>

#include "transfer/transfer.hpp"
#include "transfer/url_parts.hpp"

namespace quintara::quotes {

/// What came back at last. No part of it shows the address.
struct Download : TransferAnswer {
  std::string host;  ///< that was asked last, after redirects perhaps
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

/// Whether both lead to one server, so that one may learn a secret that is meant for the other: the
/// usual ports of http and https of one host belong together, in that order.
bool leadSameWay(const UrlParts& from, const UrlParts& to);

}  // namespace quintara::quotes
