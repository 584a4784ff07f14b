#include "service/desk/user_settings.hpp"

#include <cstdlib>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

// A file or folder below one of the user's directories, which `name` may name; empty for none. A
// relative one would depend on where the program was started.
std::filesystem::path ofUser(const char* name, const char* usual, const char* below) {
  std::filesystem::path directory = variable(name);
  if (!directory.is_absolute()) {
    directory = std::filesystem::path(variable("HOME")) / usual;
  }
  return directory.is_absolute() ? directory / below : std::filesystem::path();
}

}  // namespace

std::filesystem::path userPrices() {
  return ofUser("XDG_DATA_HOME", ".local/share", "quintara/prices");
}

std::filesystem::path userProviderFile() {
  return ofUser("XDG_CONFIG_HOME", ".config", "quintara/provider.conf");
}

void readProvider(const std::filesystem::path& file, bool named, SourceSettings& sources) {
  try {
    sources.provider = file.empty() ? std::nullopt : readProviderSettings(file);
    if (!sources.provider && named) {
      throw BadSettings("there is no file " + escaped(file.string()));
    }
  } catch (const BadSettings& bad) {
    sources.providerProblem = bad.what();
  }
}

std::string withoutProvider(const SourceSettings& sources, const std::filesystem::path& file) {
  if (sources.provider || !sources.providerProblem.empty()) {
    return {};
  }
  return "No provider was asked: there are no settings for one" +
         (file.empty() ? "" : " in " + escaped(file.string())) + ".";
}

}  // namespace quintara::quotes
