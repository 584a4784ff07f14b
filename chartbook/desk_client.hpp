#pragma once

#include <string>

#include "platform/platform.hpp"
#include "service/desk/quote_desk.hpp"

namespace quintara::chartbook {

/// Fetches from the quote service's desk in this process: it is asked what the window would ask a
/// service on the network.
class DeskClient final : public HttpClient {
 public:
  /// The desk must outlive the client.
  explicit DeskClient(const quotes::QuoteDesk& desk) : desk_(desk) {}

  std::string OpenURL(const std::string& url, int dataType) override;
  /// Why the last request that failed did so; empty if none has. Forgotten by taking it.
  std::string takeReason();

 private:
  const quotes::QuoteDesk& desk_;
  std::string reason_;
};

}  // namespace quintara::chartbook
