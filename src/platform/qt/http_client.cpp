#include "platform/qt/http_client.hpp"

#include <QCoreApplication>
#include <string_view>
#include <utility>

#include "platform/qt/dispatcher.hpp"
#include "runtime/runtime_folder.hpp"
#include "values/errors.hpp"

namespace quintara {

namespace {

using Steady = std::chrono::steady_clock;

/// The URL as it goes out; what that means for a ticker stands in data/quote_request.hpp.
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

/// A host `unix:NAME` is the socket NAME in the user's runtime folder.
TransferRequest requestFor(std::string_view url) {
  constexpr std::string_view kOverSocket = "http://unix:";
  if (!url.starts_with(kOverSocket)) {
    return {.url = encodedUrl(url)};
  }
  url.remove_prefix(kOverSocket.size());
  const auto name = url.substr(0, url.find('/'));
  try {
    return {.url = "http://localhost" + encodedUrl(url.substr(name.size())),
            .socket = std::filesystem::path(runtimeFolder()) / name};
  } catch (const RuntimeFolderUnusable&) {
    throw RuntimeError(ErrorKind::TransferFailed);
  }
}

}  // namespace

/// A body is the same bytes as text and as anything else, so the data type makes no difference.
std::string CurlHttpClient::OpenURL(const std::string& url, int /*dataType*/) {
  const Dispatcher::Busy busy(dispatcher_);
  TransferRequest request = requestFor(url);
  request.limits = limits_;
  request.refuseErrors = true;
  const Steady::time_point end = Steady::now() + limits_.time;
  for (int redirects = 0; redirects <= kMostRedirects; ++redirects) {
    TransferAnswer answer = await(request);
    if (answer.redirect.empty()) {
      return std::move(answer.body);
    }
    request.url = answer.redirect;
    request.redirected = !answer.here;
    request.limits.time = std::chrono::floor<std::chrono::milliseconds>(end - Steady::now());
  }
  throw RuntimeError(ErrorKind::TransferFailed);
}

TransferAnswer CurlHttpClient::await(const TransferRequest& request) {
  // Often enough for windows to feel alive, and a service nearby has answered before the first.
  constexpr std::chrono::milliseconds kPause{15};
  Transfer transfer(request);
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
  TransferAnswer answer = transfer.takeAnswer();
  if (!answer.problem.empty()) {
    throw RuntimeError(ErrorKind::TransferFailed);
  }
  return answer;
}

}  // namespace quintara
