#include "chartbook/desk_client.hpp"

#include <exception>
#include <utility>

#include "service/desk/refusal.hpp"
#include "service/desk/request.hpp"
#include "service/text/text.hpp"
#include "values/errors.hpp"

namespace quintara::chartbook {
namespace {

constexpr int kBadRequest = 400;
constexpr int kNoPrices = 404;

}  // namespace

std::string DeskClient::OpenURL(const std::string& url, int /*dataType*/) {
  constexpr std::string_view kScheme = "http://";
  const std::string_view target = std::string_view(url).substr(url.find('/', kScheme.size()));
  const bool asksTable = target.starts_with("/table.csv");
  try {
    const std::string ticker =
        asksTable ? quotes::parseTableRequest(target).ticker : quotes::parseQuoteRequest(target);
    if (ticker != quotes::parseTicker(ticker_)) {
      throw quotes::Refusal(kBadRequest, "a chart would ask for " + quotes::escaped(ticker) +
                                             " in place of " + quotes::escaped(ticker_));
    }
    return asksTable ? desk_.table(target) : desk_.quote(target);
  } catch (const quotes::Refusal& refusal) {
    reason_ = refusal.what();
    if (refusal.status == kNoPrices && !hint_.empty()) {
      reason_ += ". " + hint_;
    }
  } catch (const std::exception& error) {
    reason_ = quotes::escaped(error.what());
  }
  throw RuntimeError(ErrorKind::TransferFailed);
}

std::string DeskClient::takeReason() { return std::exchange(reason_, {}); }

}  // namespace quintara::chartbook
