#pragma once

#include <filesystem>

#include "service/desk/standard_sources.hpp"

namespace quintara::quotes {

/// Where the user's own prices and the settings of a provider are looked for if nothing else was
/// said; empty if the user has no place for them.
std::filesystem::path userPrices();
std::filesystem::path userProviderFile();

/// Reads the settings of a provider, if there are any; a `named` file has to be there. What is
/// wrong with them becomes the sources' problem.
void readProvider(const std::filesystem::path& file, bool named, SourceSettings& sources);

}  // namespace quintara::quotes
