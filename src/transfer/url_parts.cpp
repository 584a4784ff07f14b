#include "transfer/url_parts.hpp"

#include <memory>

#include "transfer/curl_library.hpp"

namespace quintara {
namespace {

std::string partOf(CURLU* url, CURLUPart part, unsigned flags = 0) {
  char* text = nullptr;
  if (curl().urlGet(url, part, &text, flags) != CURLUE_OK) {
    return {};
  }
  const std::unique_ptr<char, decltype(&curl_free)> owner(text, curl().free);
  return text;
}

}  // namespace

std::optional<UrlParts> urlParts(const std::string& url) {
  const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> parsed(curl().newUrl(),
                                                                   curl().urlCleanup);
  if (!parsed ||
      curl().urlSet(parsed.get(), CURLUPART_URL, url.c_str(), CURLU_DISALLOW_USER) != CURLUE_OK) {
    return std::nullopt;
  }
  UrlParts parts{partOf(parsed.get(), CURLUPART_SCHEME), partOf(parsed.get(), CURLUPART_HOST),
                 partOf(parsed.get(), CURLUPART_PORT, CURLU_DEFAULT_PORT)};
  if ((parts.scheme != "http" && parts.scheme != "https") || parts.host.empty()) {
    return std::nullopt;
  }
  return parts;
}

}  // namespace quintara
