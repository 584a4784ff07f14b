#pragma once

#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>

#include "service/desk/quote_desk.hpp"
#include "service/provider/provider_settings.hpp"
#include "service/system/log.hpp"

namespace quintara::quotes {

/// Where prices come from, and who hears of what is wrong with them.
struct SourceSettings {
  std::filesystem::path prices;  ///< the trader's own files; empty for none
  std::optional<ProviderSettings> provider = std::nullopt;
  Log log{LogLevel::Info};
  std::string providerProblem = {};  ///< why settings of a provider that are there cannot be used
};

/// The trader's own files first, then the provider, then the demonstration market. A provider whose
/// settings cannot be used comes last: what nobody else knows fails with the reason. A source that
/// can keep a client waiting gives up when `stop` is requested.
PriceSources standardSources(const SourceSettings& settings, const std::stop_token& stop);

}  // namespace quintara::quotes
