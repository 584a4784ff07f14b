#pragma once

#include <string>
#include <utility>

#include "platform/platform.hpp"
#include "service/desk/quote_desk.hpp"

namespace quintara::chartbook {

/// Fetches from the quote service's desk in this process: it is asked what the window would ask a
/// service on the network.
class DeskClient final : public HttpClient {
 public:
  /// The desk must outlive the client. What it refuses for want of prices gets `hint` as one more
  /// sentence, if there is one.
  explicit DeskClient(const quotes::QuoteDesk& desk, std::string hint = {})
      : desk_(desk), hint_(std::move(hint)) {}

  /// The ticker that is typed next. The window writes it into its requests as it is, where & or %
  /// may make another of it: such a request is refused.
  void expect(std::string ticker) { ticker_ = std::move(ticker); }

  std::string OpenURL(const std::string& url, int dataType) override;
  /// For the desk's remarks: a reason that no reply of its can tell.
  void note(const std::string& why) { reason_ = why; }
  /// Why the last request that failed, or brought nothing, did so; empty if none has. Forgotten by
  /// taking it.
  std::string takeReason();

 private:
  const quotes::QuoteDesk& desk_;
  const std::string hint_;
  std::string ticker_;
  std::string reason_;
};

}  // namespace quintara::chartbook
