#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "chartbook/order.hpp"
#include "chartbook/session.hpp"

namespace quintara::chartbook {

/// What the command line asks for.
struct Options {
  enum class Action { Chart, List, Levels, Help, Version };
  Action action = Action::Chart;
  Order order;                 ///< what holds for each line of a list that does not say otherwise
  std::filesystem::path list;  ///< the watch list
  std::filesystem::path into{"."};
  std::filesystem::path output;  ///< of the one picture; empty: named after the ticker
  PictureSize size;
  bool labels = false;
  bool json = false;
  bool quiet = false;
  int jobs = 0;                    ///< 0: as many as there are cores
  std::filesystem::path prices;    ///< the trader's own files; empty for none
  std::filesystem::path provider;  ///< settings of a provider; empty for none
  bool providerNamed = false;      ///< on the command line, so that the file has to be there
};

struct BadFlag : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Throws BadFlag or BadOrder with one line that says what is wrong.
Options parseOptions(int argc, char* const* argv);

std::string helpText();

}  // namespace quintara::chartbook
