#pragma once

#include <iosfwd>
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

/// Bars are never none.
using Found = std::variant<DailyBars, NotFound, Unusable, Failed>;

/// A place that daily prices come from. Used by several threads at once.
class PriceSource {
 public:
  virtual ~PriceSource() = default;

  /// What it is called when the trader is told of it: one line, already escaped.
  virtual std::string name() const = 0;

  /// `ticker` is in upper case and has passed the rules of tickers (see request.hpp). Bars may go
  /// beyond `today`; the caller leaves them out.
  virtual Found find(const std::string& ticker, Day today) = 0;

  /// The same, asked anew, with lines on how the answer came about: each begins with two blanks.
  virtual Found explain(const std::string& ticker, Day today, std::ostream&) {
    return find(ticker, today);
  }
};

}  // namespace quintara::quotes
