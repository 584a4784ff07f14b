#include "service/provider/download.hpp"

#include <algorithm>
#include <limits>
#include <utility>

#include "service/text/text.hpp"
#include "transfer/this_computer.hpp"
#include "values/errors.hpp"

namespace quintara::quotes {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// A hundred years of days fit several times; JSON takes up to thirty times its size in memory.
constexpr std::size_t kLargestBody = std::size_t{8} << 20;
constexpr auto kAnyNumber = std::numeric_limits<std::size_t>::max();

TransferAnswer problem(const std::string& text) {
  TransferAnswer answer;
  answer.problem = text;
  return answer;
}

// One request and its reply. `redirected`: it was another computer that sent us there.
TransferAnswer ask(const DownloadRequest& request, bool redirected, Clock::time_point deadline,
                   const std::stop_token& stop) {
  constexpr milliseconds kPatience{100};  // until the next look at `stop`
  const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
  Transfer transfer({.url = request.url,
                     .protocols = "http,https",
                     .limits = {std::max(left, milliseconds{0}), kLargestBody, kAnyNumber},
                     .agent = "quintara-quotes/" QUINTARA_VERSION,
                     .header = request.header,
                     .unpack = true,
                     .redirected = redirected,
                     .caFile = request.caFile});
  while (!transfer.advance(kPatience)) {
    if (stop.stop_requested()) {
      return problem("the service is stopping");
    }
  }
  TransferAnswer answer = transfer.takeAnswer();
  if (answer.noAuthorities) {
    answer.problem =
        request.caFile.empty()
            ? "this computer trusts no authority; Debian's package ca-certificates is missing"
            : "there are no certificates that can be used in the file that ca_file names";
  }
  return answer;
}

// Why a redirect is not followed; nothing if it may be. Where a name leads shows when it is asked.
std::string refusal(const std::optional<UrlParts>& from, const std::optional<UrlParts>& to,
                    bool fromHere) {
  if (!from || !to) {
    return "a redirect to what is no http or https address";
  }
  if (from->scheme == "https" && to->scheme != "https") {
    return "a redirect from https to http";
  }
  // What only this computer may ask must not be asked by somebody far away through it.
  return leadsToThisComputer(to->host) && !fromHere ? "a redirect to this computer" : "";
}

}  // namespace

bool leadSameWay(const UrlParts& from, const UrlParts& to) {
  const bool same = from.scheme == to.scheme && from.port == to.port;
  const bool secured =
      from.scheme == "http" && from.port == "80" && to.scheme == "https" && to.port == "443";
  return equalIgnoringCase(from.host, to.host) && (same || secured);
}

Download download(DownloadRequest request, Clock::time_point deadline,
                  const std::stop_token& stop) try {
  bool fromHere = true;
  for (int redirects = 0;; ++redirects) {
    const auto from = urlParts(request.url);
    const std::string host = from ? from->host : "";
    TransferAnswer answer = ask(request, !fromHere, deadline, stop);
    fromHere = answer.here;
    if (!answer.problem.empty() || answer.redirect.empty()) {
      return {std::move(answer), host};
    }
    const auto to = urlParts(answer.redirect);
    const auto reason =
        redirects == kMostRedirects ? "too many redirects" : refusal(from, to, fromHere);
    if (!reason.empty()) {
      return {problem(reason), host};
    }
    // Another server must not learn a key that is in the header.
    request.header = leadSameWay(*from, *to) ? request.header : "";
    request.url = answer.redirect;
  }
} catch (const RuntimeError& error) {
  return {problem(error.what()), ""};
}

}  // namespace quintara::quotes
