#include "transfer/curl_library.hpp"

#include <dlfcn.h>

#include "values/errors.hpp"

namespace quintara {

namespace {

template <class Function>
void resolve(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  if (function == nullptr) {
    failForCurl();
  }
}

CurlLibrary load() {
  // Part of the binary interface that the headers of the build describe.
  void* const library = dlopen("libcurl.so.4", RTLD_LAZY | RTLD_LOCAL);
  if (library == nullptr) {
    failForCurl();
  }
  CurlLibrary curl;
  resolve(library, "curl_easy_init", curl.easyInit);
  resolve(library, "curl_easy_setopt", curl.easySetOption);
  resolve(library, "curl_easy_getinfo", curl.easyGetInfo);
  resolve(library, "curl_easy_strerror", curl.easyErrorText);
  resolve(library, "curl_easy_cleanup", curl.easyCleanup);
  resolve(library, "curl_multi_init", curl.multiInit);
  resolve(library, "curl_multi_add_handle", curl.multiAddHandle);
  resolve(library, "curl_multi_remove_handle", curl.multiRemoveHandle);
  resolve(library, "curl_multi_perform", curl.multiPerform);
  resolve(library, "curl_multi_poll", curl.multiPoll);
  resolve(library, "curl_multi_info_read", curl.multiInfoRead);
  resolve(library, "curl_multi_cleanup", curl.multiCleanup);
  resolve(library, "curl_slist_append", curl.listAppend);
  resolve(library, "curl_slist_free_all", curl.listFree);
  resolve(library, "curl_url", curl.newUrl);
  resolve(library, "curl_url_set", curl.urlSet);
  resolve(library, "curl_url_get", curl.urlGet);
  resolve(library, "curl_url_cleanup", curl.urlCleanup);
  resolve(library, "curl_free", curl.free);
  decltype(&curl_global_init) globalInit = nullptr;
  resolve(library, "curl_global_init", globalInit);
  if (globalInit(CURL_GLOBAL_DEFAULT) != CURLE_OK) {
    failForCurl();
  }
  return curl;
}

}  // namespace

void failForCurl() { throw RuntimeError(ErrorKind::TransferFailed, "libcurl cannot be used"); }

const CurlLibrary& curl() {
  static const CurlLibrary library = load();
  return library;
}

}  // namespace quintara
