#include "transfer/transfer.hpp"

#include <cstdlib>

#include "values/errors.hpp"

namespace quintara {

namespace {

[[noreturn]] void fail() { throw RuntimeError(ErrorKind::TransferFailed); }

template <class Value>
void set(CURL* easy, CURLoption option, Value value) {
  if (curl().easySetOption(easy, option, value) != CURLE_OK) {
    fail();
  }
}

/// The user's own exceptions from the proxy, and this computer.
std::string hostsWithoutProxy() {
  std::string hosts;
  for (const char* name : {"NO_PROXY", "no_proxy"}) {
    if (const char* value = std::getenv(name)) {
      hosts = value;
    }
  }
  if (hosts == "*") {
    return hosts;
  }
  if (!hosts.empty()) {
    hosts += ',';
  }
  return hosts + "localhost,127.0.0.0/8,::1";
}

}  // namespace

std::string encodedUrl(std::string_view url) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(url.size());
  for (const char character : url) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte > 0x20 && byte < 0x7F && byte != '#') {
      encoded += character;
    } else {
      encoded += {'%', kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
  }
  return encoded;
}

Transfer::Transfer(const std::string& url, const TransferLimits& limits) : limits_(limits) {
  easy_.reset(curl().easyInit());
  multi_.reset(curl().multiInit());
  if (!easy_ || !multi_) {
    fail();
  }
  set(easy_.get(), CURLOPT_URL, encodedUrl(url).c_str());
  set(easy_.get(), CURLOPT_WRITEFUNCTION, &Transfer::receive);
  set(easy_.get(), CURLOPT_WRITEDATA, static_cast<void*>(this));
  restrict();
  if (curl().multiAddHandle(multi_.get(), easy_.get()) != CURLM_OK) {
    fail();
  }
}

void Transfer::restrict() {
  CURL* const easy = easy_.get();
  // Of redirects too.
  set(easy, CURLOPT_PROTOCOLS_STR, "http");
  set(easy, CURLOPT_FOLLOWLOCATION, 1L);
  set(easy, CURLOPT_MAXREDIRS, 3L);
  set(easy, CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
  set(easy, CURLOPT_PATH_AS_IS, 1L);
  set(easy, CURLOPT_FAILONERROR, 1L);
  set(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(limits_.time.count()));
  set(easy, CURLOPT_NOSIGNAL, 1L);
  // A service may have few workers; none should wait for a request that never comes.
  set(easy, CURLOPT_FORBID_REUSE, 1L);
  set(easy, CURLOPT_NOPROXY, hostsWithoutProxy().c_str());
}

Transfer::~Transfer() { curl().multiRemoveHandle(multi_.get(), easy_.get()); }

std::size_t Transfer::receive(char* data, std::size_t size, std::size_t count, void* transfer) {
  auto& self = *static_cast<Transfer*>(transfer);
  const std::size_t length = size * count;
  if (length > self.limits_.bytes - self.body_.size()) {
    return 0;
  }
  try {
    self.body_.append(data, length);
  } catch (const std::bad_alloc&) {
    return 0;
  }
  return length;
}

bool Transfer::advance(std::chrono::milliseconds patience) {
  int running = 0;
  if (curl().multiPerform(multi_.get(), &running) != CURLM_OK) {
    fail();
  }
  if (running > 0) {
    const int wait = static_cast<int>(patience.count());
    if (curl().multiPoll(multi_.get(), nullptr, 0, wait, nullptr) != CURLM_OK) {
      fail();
    }
    return false;
  }
  int left = 0;
  const CURLMsg* message = curl().multiInfoRead(multi_.get(), &left);
  if (message == nullptr || message->data.result != CURLE_OK) {
    fail();
  }
  return true;
}

}  // namespace quintara
