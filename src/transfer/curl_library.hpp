#pragma once

#include <curl/curl.h>

namespace quintara {

/// The functions of libcurl that are used.
///
/// The library is loaded by the first use, not linked: it brings two dozen others with it, which
/// would make every start of the window slower and larger before anything is fetched.
struct CurlLibrary {
  decltype(&curl_easy_init) easyInit = nullptr;
  decltype(&curl_easy_setopt) easySetOption = nullptr;
  decltype(&curl_easy_getinfo) easyGetInfo = nullptr;
  decltype(&curl_easy_strerror) easyErrorText = nullptr;
  decltype(&curl_easy_cleanup) easyCleanup = nullptr;
  decltype(&curl_multi_init) multiInit = nullptr;
  decltype(&curl_multi_add_handle) multiAddHandle = nullptr;
  decltype(&curl_multi_remove_handle) multiRemoveHandle = nullptr;
  decltype(&curl_multi_perform) multiPerform = nullptr;
  decltype(&curl_multi_poll) multiPoll = nullptr;
  decltype(&curl_multi_info_read) multiInfoRead = nullptr;
  decltype(&curl_multi_cleanup) multiCleanup = nullptr;
  decltype(&curl_slist_append) listAppend = nullptr;
  decltype(&curl_slist_free_all) listFree = nullptr;
  decltype(&curl_url) newUrl = nullptr;
  decltype(&curl_url_set) urlSet = nullptr;
  decltype(&curl_url_get) urlGet = nullptr;
  decltype(&curl_url_cleanup) urlCleanup = nullptr;
  decltype(&curl_free) free = nullptr;
};

/// Loads and initialises libcurl at the first call. Throws TransferFailed if that cannot be done.
const CurlLibrary& curl();

[[noreturn]] void failForCurl();  ///< Throws TransferFailed: libcurl cannot be used.

}  // namespace quintara
