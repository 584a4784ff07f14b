#include "chartbook/desk_client.hpp"

#include <exception>
#include <utility>

#include "service/desk/refusal.hpp"
#include "service/text/text.hpp"
#include "values/errors.hpp"

namespace quintara::chartbook {

std::string DeskClient::OpenURL(const std::string& url, int /*dataType*/) {
  constexpr std::string_view kScheme = "http://";
  const std::string_view target = std::string_view(url).substr(url.find('/', kScheme.size()));
  try {
    return target.starts_with("/table.csv") ? desk_.table(target) : desk_.quote(target);
  } catch (const quotes::Refusal& refusal) {
    constexpr int kNoPrices = 404;
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
