#include "transfer/url_parts.hpp"

#include <curl/curl.h>

#include <memory>

namespace quintara {
namespace {

std::string partOf(CURLU* url, CURLUPart part, unsigned flags = 0) {
  char* text = nullptr;
  if (curl_url_get(url, part, &text, flags) != CURLUE_OK) {
    return {};
  }
  const std::unique_ptr<char, void (*)(void*)> owner(text, curl_free);
  return text;
}

}  // namespace

std::optional<UrlParts> urlParts(const std::string& url) {
  const std::unique_ptr<CURLU, void (*)(CURLU*)> parsed(curl_url(), curl_url_cleanup);
  if (!parsed ||
      curl_url_set(parsed.get(), CURLUPART_URL, url.c_str(), CURLU_DISALLOW_USER) != CURLUE_OK) {
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
