#include "transfer/curl_library.hpp"

#include <dlfcn.h>

#include "values/errors.hpp"

namespace quintara {

namespace {

template <class Function>
void resolve(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  if (function == nullptr) {
    throw RuntimeError(ErrorKind::TransferFailed);
  }
}

CurlLibrary load() {
  // Part of the binary interface that the headers of the build describe.
  void* const library = dlopen("libcurl.so.4", RTLD_LAZY | RTLD_LOCAL);
  if (library == nullptr) {
    throw RuntimeError(ErrorKind::TransferFailed);
  }
  CurlLibrary curl;
  resolve(library, "curl_easy_init", curl.easyInit);
  resolve(library, "curl_easy_setopt", curl.easySetOption);
  resolve(library, "curl_easy_cleanup", curl.easyCleanup);
  resolve(library, "curl_multi_init", curl.multiInit);
  resolve(library, "curl_multi_add_handle", curl.multiAddHandle);
  resolve(library, "curl_multi_remove_handle", curl.multiRemoveHandle);
  resolve(library, "curl_multi_perform", curl.multiPerform);
  resolve(library, "curl_multi_poll", curl.multiPoll);
  resolve(library, "curl_multi_info_read", curl.multiInfoRead);
  resolve(library, "curl_multi_cleanup", curl.multiCleanup);
  decltype(&curl_global_init) globalInit = nullptr;
  resolve(library, "curl_global_init", globalInit);
  // Plain HTTP needs none of the libraries that libcurl could start up.
  if (globalInit(CURL_GLOBAL_NOTHING) != CURLE_OK) {
    throw RuntimeError(ErrorKind::TransferFailed);
  }
  return curl;
}

}  // namespace

const CurlLibrary& curl() {
  static const CurlLibrary library = load();
  return library;
}

}  // namespace quintara
