#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "service/commands/add_prices.hpp"
#include "service/server.hpp"

namespace quintara::quotes {

/// What the command line asks for.
struct Options {
  enum class Action { Serve, Check, List, Add, RuntimeFolder, Help, Version };
  Action action = Action::Serve;
  ServerSettings settings;
  std::filesystem::path providerFile;  ///< empty if the user has no place for it
  bool providerNamed = false;          ///< on the command line, so that the file has to be there
  std::string ticker;                  ///< to check
  AddRequest add;
};

struct BadFlag : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Throws BadFlag with one line that names the flag.
Options parseOptions(int argc, char* const* argv);

std::string helpText();

}  // namespace quintara::quotes
