#pragma once

#include <string>
#include <variant>

#include "service/prices/price.hpp"

namespace quintara::quotes {

/// The source does not know the ticker; the next one is asked.
struct NotFound {
  std::string reason;  ///< one line, already escaped; may be empty
};

/// The source has something for the ticker that cannot be used; no other source is asked, because
/// the trader must not mistake its prices for the ones expected.
struct Unusable {
  std::string reason;  ///< one line, already escaped
};

/// The source could not be asked, or its answer makes no sense; no other source is asked either.
struct Failed {
  std::string reason;  ///< one line, already escaped
};

using Found = std::variant<DailyBars, NotFound, Unusable, Failed>;

/// A place that daily prices come from. Used by several threads at once.
class PriceSource {
 public:
  virtual ~PriceSource() = default;

  /// `ticker` is in upper case and has passed the rules of tickers (see request.hpp). Bars may go
  /// beyond `today`; the caller leaves them out.
  virtual Found find(const std::string& ticker, Day today) = 0;
};

}  // namespace quintara::quotes
