#pragma once

#include <iosfwd>
#include <string>

#include "service/provider/provider_settings.hpp"

namespace quintara::quotes {

/// Asks the provider for one ticker and writes what came of it for the trader who wrote the
/// settings. Returns whether there are prices. Throws Refusal for a ticker that cannot exist.
bool checkProvider(const ProviderSettings& settings, const std::string& ticker, Day today,
                   std::ostream& out);

}  // namespace quintara::quotes
