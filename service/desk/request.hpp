#pragma once

#include <string>
#include <string_view>

#include "service/desk/refusal.hpp"
#include "service/prices/bars.hpp"

namespace quintara::quotes {

struct TableRequest {
  std::string ticker;
  Day first;
  Day last;
  Interval interval = Interval::Daily;
};

/// Both read the request target as it came over the wire, because a plus sign in a ticker is a plus
/// sign and not the blank that forms make of it. They throw Refusal.
///
/// Tickers come back in upper case, at most 100 bytes. One with a control character, a slash or
/// backslash, "..", a comma or a quotation mark cannot exist: it could leave a folder or break a
/// line of fields. It is refused as an unknown ticker.
TableRequest parseTableRequest(std::string_view target);
std::string parseQuoteRequest(std::string_view target);

/// A ticker that is plain text, by the same rules.
std::string parseTicker(std::string_view text);

}  // namespace quintara::quotes
