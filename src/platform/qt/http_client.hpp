#pragma once

#include <chrono>
#include <cstddef>

#include "platform/platform.hpp"

namespace quintara {

class Dispatcher;

struct TransferLimits {
  std::chrono::milliseconds time{60'000};     ///< for all of a transfer, redirects included
  std::size_t bytes = std::size_t{64} << 20;  ///< of the body
};

/// Fetches over plain HTTP. While it waits, windows are repainted but no handler starts; closing
/// the main window makes the transfer fail.
class CurlHttpClient final : public HttpClient {
 public:
  explicit CurlHttpClient(Dispatcher& dispatcher, TransferLimits limits = {})
      : dispatcher_(dispatcher), limits_(limits) {}
  std::string OpenURL(const std::string& url, int dataType) override;

 private:
  Dispatcher& dispatcher_;
  TransferLimits limits_;
};

}  // namespace quintara
