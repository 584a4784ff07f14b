#include "platform/qt/http_client.hpp"

#include <QCoreApplication>

#include "platform/qt/dispatcher.hpp"
#include "values/errors.hpp"

namespace quintara {

/// A body is the same bytes as text and as anything else, so the data type makes no difference.
std::string CurlHttpClient::OpenURL(const std::string& url, int /*dataType*/) {
  using Steady = std::chrono::steady_clock;
  // Often enough for windows to feel alive, and a service nearby has answered before the first.
  constexpr std::chrono::milliseconds kPause{15};
  const Dispatcher::Busy busy(dispatcher_);
  Transfer transfer(url, limits_);
  Steady::time_point due = Steady::now() + kPause;
  while (!transfer.advance(kPause)) {
    if (Steady::now() < due) {
      continue;
    }
    QCoreApplication::processEvents();
    if (dispatcher_.isEnding()) {
      throw RuntimeError(ErrorKind::TransferFailed);
    }
    due = Steady::now() + kPause;
  }
  return transfer.takeBody();
}

}  // namespace quintara
