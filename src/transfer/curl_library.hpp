#pragma once

#include <curl/curl.h>

namespace quintara {

/// The functions of libcurl that a transfer needs.
///
/// The library is loaded by the first transfer, not linked: it brings two dozen others with it,
/// which would make every start slower and larger before anything is fetched.
struct CurlLibrary {
  decltype(&curl_easy_init) easyInit = nullptr;
  decltype(&curl_easy_setopt) easySetOption = nullptr;
  decltype(&curl_easy_cleanup) easyCleanup = nullptr;
  decltype(&curl_multi_init) multiInit = nullptr;
  decltype(&curl_multi_add_handle) multiAddHandle = nullptr;
  decltype(&curl_multi_remove_handle) multiRemoveHandle = nullptr;
  decltype(&curl_multi_perform) multiPerform = nullptr;
  decltype(&curl_multi_poll) multiPoll = nullptr;
  decltype(&curl_multi_info_read) multiInfoRead = nullptr;
  decltype(&curl_multi_cleanup) multiCleanup = nullptr;
};

/// Loads and initialises libcurl at the first call. Throws TransferFailed if that cannot be done.
const CurlLibrary& curl();

}  // namespace quintara
