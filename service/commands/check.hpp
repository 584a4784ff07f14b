#pragma once

#include <iosfwd>
#include <string>

#include "service/desk/standard_sources.hpp"

namespace quintara::quotes {

/// Asks the sources for one ticker in the order in which the service does, and writes for the
/// trader what came of it: who answers, how the answer was read, whom it hides, and what a chart
/// gets. Returns whether there are prices. Throws Refusal for a ticker that cannot exist.
bool check(const SourceSettings& settings, const std::string& symbol, Day today, std::ostream& out);

}  // namespace quintara::quotes
