#pragma once

#include <filesystem>
#include <string>

#include "service/desk/standard_sources.hpp"

namespace quintara::quotes {

/// Where the user's own prices and the settings of a provider are looked for if nothing else was
/// said; empty if the user has no place for them.
std::filesystem::path userPrices();
std::filesystem::path userProviderFile();

/// Reads the settings of a provider, if there are any; a `named` file has to be there. What is
/// wrong with them becomes the sources' problem.
void readProvider(const std::filesystem::path& file, bool named, SourceSettings& sources);

/// A sentence for whoever looks in vain for prices: that no provider was asked, as `file` has no
/// settings for one. Nothing if one is asked or something is wrong with its settings.
std::string withoutProvider(const SourceSettings& sources, const std::filesystem::path& file);

}  // namespace quintara::quotes
