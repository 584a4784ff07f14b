#pragma once

#include "platform/platform.hpp"
#include "transfer/transfer.hpp"

namespace quintara {

class Dispatcher;

/// Fetches over plain HTTP; from a host `unix:NAME` over the socket NAME in the user's own runtime
/// folder, as if it were localhost. While it waits, windows are repainted but no handler starts;
/// closing the main window makes the transfer fail.
class CurlHttpClient final : public HttpClient {
 public:
  explicit CurlHttpClient(Dispatcher& dispatcher, TransferLimits limits = {})
      : dispatcher_(dispatcher), limits_(limits) {}
  std::string OpenURL(const std::string& url, int dataType) override;

 private:
  TransferAnswer await(const TransferRequest& request);

  Dispatcher& dispatcher_;
  TransferLimits limits_;
};

}  // namespace quintara
