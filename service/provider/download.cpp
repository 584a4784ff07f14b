#include "service/provider/download.hpp"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <stdexcept>

#include "service/provider/this_computer.hpp"
#include "transfer/url_parts.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// A hundred years of days fit several times; JSON takes up to thirty times its size in
// memory.
constexpr std::size_t kLargestBody = 8 * std::size_t{1024} * 1024;
constexpr long kLongestConnecting = 10'000;  // milliseconds
constexpr int kMostRedirects = 4;

template <auto free>
struct Free {
  template <class T>
  void operator()(T* object) const {
    free(object);
  }
};
using Easy = std::unique_ptr<CURL, Free<curl_easy_cleanup>>;
using Multi = std::unique_ptr<CURLM, Free<curl_multi_cleanup>>;
using Headers = std::unique_ptr<curl_slist, Free<curl_slist_free_all>>;

template <class Handle>
Handle owned(typename Handle::pointer handle) {
  if (handle == nullptr) {
    throw std::bad_alloc();
  }
  return Handle(handle);
}

// One request and its reply, without its redirects.
class Exchange {
 public:
  Exchange(const DownloadRequest& request, milliseconds time);
  ~Exchange() { curl_multi_remove_handle(multi_.get(), easy_.get()); }
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  Download run(const std::stop_token& stop);
  std::string redirect() const;  // where the reply sends the client; empty for nowhere

 private:
  template <class Value>
  void set(CURLoption option, Value value) {
    if (curl_easy_setopt(easy_.get(), option, value) != CURLE_OK) {
      throw std::runtime_error("libcurl lacks an option that is needed");
    }
  }
  void setUp(const DownloadRequest& request);
  static std::size_t receive(char* data, std::size_t size, std::size_t count, void* exchange);
  CURLcode perform(const std::stop_token& stop);
  std::string problemOf(CURLcode code) const;

  Easy easy_ = owned<Easy>(curl_easy_init());
  Multi multi_ = owned<Multi>(curl_multi_init());
  Headers headers_;
  std::array<char, CURL_ERROR_SIZE> error_{};
  std::string body_;
  bool tooLarge_ = false;
  bool ownAuthorities_ = false;
};

Exchange::Exchange(const DownloadRequest& request, milliseconds time) {
  setUp(request);
  const long limit = std::max(static_cast<long>(time.count()), 1L);
  set(CURLOPT_TIMEOUT_MS, limit);
  set(CURLOPT_CONNECTTIMEOUT_MS, std::min(limit, kLongestConnecting));
  if (curl_multi_add_handle(multi_.get(), easy_.get()) != CURLM_OK) {
    throw std::bad_alloc();
  }
}

void Exchange::setUp(const DownloadRequest& request) {
  set(CURLOPT_URL, request.url.c_str());
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_PATH_AS_IS, 1L);
  set(CURLOPT_USERAGENT, "quintara-quotes/" QUINTARA_VERSION);
  set(CURLOPT_ACCEPT_ENCODING, "");  // whatever can be unpacked; the limit holds for what comes out
  set(CURLOPT_ERRORBUFFER, error_.data());
  set(CURLOPT_WRITEFUNCTION, &Exchange::receive);
  set(CURLOPT_WRITEDATA, static_cast<void*>(this));
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_QUICK_EXIT, 1L);  // no waiting for a name that does not resolve
  ownAuthorities_ = !request.caFile.empty();
  if (ownAuthorities_) {
    set(CURLOPT_CAINFO, request.caFile.c_str());
    set(CURLOPT_PROXY_CAINFO, request.caFile.c_str());
  }
  if (!request.header.empty()) {
    headers_ = owned<Headers>(curl_slist_append(nullptr, request.header.c_str()));
    set(CURLOPT_HTTPHEADER, headers_.get());
    set(CURLOPT_HEADEROPT, static_cast<long>(CURLHEADER_SEPARATE));  // not for the proxy
  }
}

std::size_t Exchange::receive(char* data, std::size_t size, std::size_t count, void* exchange) {
  auto& self = *static_cast<Exchange*>(exchange);
  const std::size_t length = size * count;
  self.tooLarge_ = length > kLargestBody - self.body_.size();
  if (self.tooLarge_) {
    return 0;
  }
  try {
    self.body_.append(data, length);
  } catch (const std::bad_alloc&) {
    return 0;
  }
  return length;
}

CURLcode Exchange::perform(const std::stop_token& stop) {
  constexpr int kPatience = 100;  // milliseconds until the next look at `stop`
  int running = 1;
  while (curl_multi_perform(multi_.get(), &running) == CURLM_OK && running > 0) {
    if (stop.stop_requested()) {
      return CURLE_ABORTED_BY_CALLBACK;
    }
    curl_multi_poll(multi_.get(), nullptr, 0, kPatience, nullptr);
  }
  int left = 0;
  const CURLMsg* message = curl_multi_info_read(multi_.get(), &left);
  return message != nullptr ? message->data.result : CURLE_FAILED_INIT;
}

std::string Exchange::problemOf(CURLcode code) const {
  if (code == CURLE_ABORTED_BY_CALLBACK) {
    return "the service is stopping";
  }
  if (tooLarge_) {
    return "the reply is larger than 8 MB";
  }
  if (code == CURLE_SSL_CACERT_BADFILE) {
    return ownAuthorities_
               ? "there are no certificates that can be used in the file that ca_file names"
               : "this computer trusts no authority; Debian's package ca-certificates is missing";
  }
  long proxyStatus = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_HTTP_CONNECTCODE, &proxyStatus);
  return proxyStatus >= 300 ? "the proxy answered " + std::to_string(proxyStatus)
                            : curl_easy_strerror(code);
}

Download Exchange::run(const std::stop_token& stop) {
  Download result;
  if (const CURLcode code = perform(stop); code != CURLE_OK) {
    result.problem = problemOf(code);
    // libcurl's longer messages can show a proxy's password or an address; those about certificates
    // do not, and say what is wrong with them.
    result.detail = code == CURLE_PEER_FAILED_VERIFICATION ? error_.data() : "";
    return result;
  }
  curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &result.status);
  result.body = std::move(body_);
  return result;
}

std::string Exchange::redirect() const {
  const char* target = nullptr;
  curl_easy_getinfo(easy_.get(), CURLINFO_REDIRECT_URL, &target);
  return target != nullptr ? target : "";
}

Download problem(const std::optional<UrlParts>& at, const std::string& text) {
  return {0, {}, at ? at->host : "", text, {}};
}

// Why a redirect is not followed; nothing if it may be.
std::string refusal(const std::optional<UrlParts>& from, const std::optional<UrlParts>& to) {
  if (!from || !to) {
    return "a redirect to what is no http or https address";
  }
  if (from->scheme == "https" && to->scheme != "https") {
    return "a redirect from https to http";
  }
  // What only this computer may ask must not be asked by somebody far away through it.
  return leadsToThisComputer(to->host) && !leadsToThisComputer(from->host)
             ? "a redirect to this computer"
             : "";
}

// Whether both lead to one server, so that one may learn a secret that is meant for the other: the
// usual ports of http and https of one host belong together.
bool leadSameWay(const UrlParts& from, const UrlParts& to) {
  const bool same = from.scheme == to.scheme && from.port == to.port;
  const bool secured =
      from.scheme == "http" && from.port == "80" && to.scheme == "https" && to.port == "443";
  return equalIgnoringCase(from.host, to.host) && (same || secured);
}

}  // namespace

Download download(DownloadRequest request, Clock::time_point deadline,
                  const std::stop_token& stop) {
  static const CURLcode kReady = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (kReady != CURLE_OK) {
    return problem({}, "libcurl cannot be used");
  }
  for (int redirects = 0;; ++redirects) {
    const auto from = urlParts(request.url);
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    if (left.count() <= 0) {
      return problem(from, curl_easy_strerror(CURLE_OPERATION_TIMEDOUT));
    }
    Exchange exchange(request, left);
    Download result = exchange.run(stop);
    result.host = from ? from->host : "";
    const std::string target = exchange.redirect();
    if (!result.problem.empty() || target.empty()) {
      return result;
    }
    const auto to = urlParts(target);
    const auto reason = redirects == kMostRedirects ? "too many redirects" : refusal(from, to);
    if (!reason.empty()) {
      return problem(from, reason);
    }
    // Another server must not learn a key that is in the header.
    request.header = leadSameWay(*from, *to) ? request.header : "";
    request.url = target;
  }
}

}  // namespace quintara::quotes
