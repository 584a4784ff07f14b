#include "transfer/transfer.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "transfer/curl_library.hpp"
#include "transfer/receiver.hpp"
#include "transfer/this_computer.hpp"

namespace quintara {

namespace {

constexpr long kLongestConnecting = 10'000;  // milliseconds

struct Free {
  void operator()(CURL* easy) const { curl().easyCleanup(easy); }
  void operator()(curl_slist* list) const { curl().listFree(list); }
};
struct FreeMulti {
  void operator()(CURLM* multi) const { curl().multiCleanup(multi); }
};

}  // namespace

struct Transfer::State {
  explicit State(const TransferRequest& request);
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() { curl().multiRemoveHandle(multi.get(), easy.get()); }

  template <class Value>
  void set(CURLoption option, Value value) {
    if (curl().easySetOption(easy.get(), option, value) != CURLE_OK) {
      failForCurl();
    }
  }
  void setWhatToAsk(const TransferRequest& request);
  void setLimits(const TransferRequest& request);
  void setCallbacks();
  void finish(CURLcode code);
  [[nodiscard]] std::string problemOf(CURLcode code) const;

  Receiver receiver;
  TransferAnswer answer;
  std::array<char, CURL_ERROR_SIZE> error{};
  std::unique_ptr<curl_slist, Free> headers;
  const std::unique_ptr<CURL, Free> easy{curl().easyInit()};
  const std::unique_ptr<CURLM, FreeMulti> multi{curl().multiInit()};
};

Transfer::State::State(const TransferRequest& request) : receiver(request) {
  if (!easy || !multi) {
    failForCurl();
  }
  setWhatToAsk(request);
  setLimits(request);
  setCallbacks();
  if (curl().multiAddHandle(multi.get(), easy.get()) != CURLM_OK) {
    failForCurl();
  }
}

void Transfer::State::setWhatToAsk(const TransferRequest& request) {
  set(CURLOPT_URL, request.url.c_str());
  set(CURLOPT_PATH_AS_IS, 1L);
  if (!request.socket.empty()) {
    set(CURLOPT_UNIX_SOCKET_PATH, request.socket.c_str());
  }
  if (!request.agent.empty()) {
    set(CURLOPT_USERAGENT, request.agent.c_str());
  }
  if (request.unpack) {
    set(CURLOPT_ACCEPT_ENCODING, "");  // whatever can be unpacked
  }
  if (!request.header.empty()) {
    headers.reset(curl().listAppend(nullptr, request.header.c_str()));
    if (!headers) {
      failForCurl();
    }
    set(CURLOPT_HTTPHEADER, headers.get());
    set(CURLOPT_HEADEROPT, static_cast<long>(CURLHEADER_SEPARATE));
  }
  if (!request.caFile.empty()) {
    set(CURLOPT_CAINFO, request.caFile.c_str());
    set(CURLOPT_PROXY_CAINFO, request.caFile.c_str());
  }
  if (receiver.to() && leadsToThisComputer(receiver.to()->host)) {
    set(CURLOPT_NOPROXY, "*");
  }
}

void Transfer::State::setLimits(const TransferRequest& request) {
  const long time = std::max(static_cast<long>(request.limits.time.count()), 1L);
  set(CURLOPT_TIMEOUT_MS, time);
  set(CURLOPT_CONNECTTIMEOUT_MS, std::min(time, kLongestConnecting));
  set(CURLOPT_PROTOCOLS_STR, request.protocols.c_str());
  set(CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
  set(CURLOPT_FAILONERROR, request.refuseErrors ? 1L : 0L);
  set(CURLOPT_NOSIGNAL, 1L);
  // No waiting for a name that does not resolve; unknown to libcurl before 7.87, which then waits.
  curl().easySetOption(easy.get(), CURLOPT_QUICK_EXIT, 1L);
}

void Transfer::State::setCallbacks() {
  const auto self = static_cast<void*>(&receiver);
  set(CURLOPT_ERRORBUFFER, error.data());
  set(CURLOPT_WRITEFUNCTION, &Receiver::takeBody);
  set(CURLOPT_WRITEDATA, self);
  set(CURLOPT_HEADERFUNCTION, &Receiver::takeHeader);
  set(CURLOPT_HEADERDATA, self);
  set(CURLOPT_OPENSOCKETFUNCTION, &Receiver::open);
  set(CURLOPT_OPENSOCKETDATA, self);
}

void Transfer::State::finish(CURLcode code) {
  if (code == CURLE_OK) {
    curl().easyGetInfo(easy.get(), CURLINFO_RESPONSE_CODE, &answer.status);
    const char* target = nullptr;
    curl().easyGetInfo(easy.get(), CURLINFO_REDIRECT_URL, &target);
    answer.redirect = target != nullptr ? target : "";
    answer.body = std::move(receiver.body());
    answer.here = receiver.here();
    return;
  }
  answer.problem = problemOf(code);
  // libcurl's longer messages can show a proxy's password or an address; those about certificates
  // do not, and say what is wrong with them.
  answer.detail = code == CURLE_PEER_FAILED_VERIFICATION ? error.data() : "";
  answer.noAuthorities = code == CURLE_SSL_CACERT_BADFILE;
}

std::string Transfer::State::problemOf(CURLcode code) const {
  if (receiver.refusal() != nullptr) {
    return receiver.refusal();
  }
  long proxyStatus = 0;
  curl().easyGetInfo(easy.get(), CURLINFO_HTTP_CONNECTCODE, &proxyStatus);
  return proxyStatus >= 300 ? "the proxy answered " + std::to_string(proxyStatus)
                            : curl().easyErrorText(code);
}

Transfer::Transfer(const TransferRequest& request) : state_(std::make_unique<State>(request)) {}

Transfer::~Transfer() = default;

bool Transfer::advance(std::chrono::milliseconds patience) {
  CURLM* const multi = state_->multi.get();
  int running = 0;
  if (curl().multiPerform(multi, &running) != CURLM_OK) {
    failForCurl();
  }
  if (running > 0) {
    const int wait = static_cast<int>(patience.count());
    if (curl().multiPoll(multi, nullptr, 0, wait, nullptr) != CURLM_OK) {
      failForCurl();
    }
    return false;
  }
  int left = 0;
  const CURLMsg* message = curl().multiInfoRead(multi, &left);
  if (message == nullptr) {
    failForCurl();
  }
  state_->finish(message->data.result);
  return true;
}

TransferAnswer Transfer::takeAnswer() { return std::move(state_->answer); }

}  // namespace quintara
