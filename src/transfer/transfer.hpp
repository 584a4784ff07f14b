#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "transfer/curl_library.hpp"

namespace quintara {

struct TransferLimits {
  std::chrono::milliseconds time{60'000};     ///< for all of a transfer, redirects included
  std::size_t bytes = std::size_t{64} << 20;  ///< of the body
};

/// The URL as it goes out: blanks, controls, '#' and bytes beyond ASCII percent-encoded, the rest
/// as it stands.
std::string encodedUrl(std::string_view url);

/// One GET over plain HTTP, driven by its caller. Redirects are followed, three at most.
class Transfer {
 public:
  /// Throws TransferFailed for a URL that cannot be asked for.
  Transfer(const std::string& url, const TransferLimits& limits);
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;
  ~Transfer();

  /// Goes on as far as it can without waiting; true when the body is complete. Otherwise waits for
  /// the network, for `patience` at most. Throws TransferFailed.
  bool advance(std::chrono::milliseconds patience);
  [[nodiscard]] std::string takeBody() { return std::move(body_); }

 private:
  struct EasyCleanup {
    void operator()(CURL* easy) const { curl().easyCleanup(easy); }
  };
  struct MultiCleanup {
    void operator()(CURLM* multi) const { curl().multiCleanup(multi); }
  };
  static std::size_t receive(char* data, std::size_t size, std::size_t count, void* transfer);
  void restrict();

  const TransferLimits limits_;
  std::string body_;
  std::unique_ptr<CURL, EasyCleanup> easy_;
  std::unique_ptr<CURLM, MultiCleanup> multi_;
};

}  // namespace quintara
