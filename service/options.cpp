#include "service/options.hpp"

#include <getopt.h>

#include <array>
#include <string_view>
#include <vector>

#include "service/desk/user_settings.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

// What the library returns for what is no flag, because of the - in front of the short flags, and
// what we make it return for the first one: above the characters that it returns for bad flags.
constexpr int kArgument = 1;
constexpr int kFirst = 1000;

int portOf(const std::string& flag, const std::string& text) {
  const auto port = parseCount(text);
  if (!port || *port > 65535) {
    throw BadFlag(flag + " needs a port number from 0 to 65535, not \"" + escaped(text) + "\"");
  }
  return *port;
}

LogLevel levelOf(const std::string& text) {
  const auto level = logLevelNamed(text);
  if (!level) {
    throw BadFlag("--log-level needs error, warning, info or debug, not \"" + escaped(text) + "\"");
  }
  return *level;
}

std::string filledIn(const std::string& flag, const std::string& text, const std::string& what) {
  if (text.empty()) {
    throw BadFlag(flag + " needs " + what);
  }
  return text;
}

struct Flag {
  const char* name;
  std::string_view value;  // as the help calls it; it may be elsewhere where dots are behind
  std::string_view help;
  void (*apply)(Options& options, const std::string& value);
};

constexpr auto kFlags = std::to_array<Flag>({
    {"history-port", "N",
     "serve /table.csv on this port of 127.0.0.1 (0 picks a free one)\n"
     "and not on the socket history in the runtime folder",
     [](Options& options, const std::string& value) {
       options.settings.historyPort = portOf("--history-port", value);
     }},
    {"quotes-port", "N", "serve /d/quotes.csv on this port, and not on the socket quotes",
     [](Options& options, const std::string& value) {
       options.settings.quotesPort = portOf("--quotes-port", value);
     }},
    {"prices", "DIR",
     "folder of own prices, a file TICKER.csv, .txt or .tsv each\n"
     "(quintara/prices in the user's data directory)",
     [](Options& options, const std::string& value) {
       options.settings.sources.prices = filledIn("--prices", value, "the name of a folder");
     }},
    {"provider", "FILE",
     "settings of the provider (quintara/provider.conf in the user's configuration\n"
     "directory)",
     [](Options& options, const std::string& value) {
       options.providerFile = filledIn("--provider", value, "the name of a file");
       options.providerNamed = true;
     }},
    {"check", "SYMBOL",
     "ask for one symbol as the service does; show who answers, how the answer was\n"
     "read, what is wrong with it and what a chart gets",
     [](Options& options, const std::string& value) {
       options.ticker = filledIn("--check", value, "a symbol");
       options.action = Options::Action::Check;
     }},
    {"list", "", "show what the folder of own prices offers, one line a ticker",
     [](Options& options, const std::string&) { options.action = Options::Action::List; }},
    {"add", "FILE...",
     "read price files and put them into the folder of own prices; the ticker is the\n"
     "file's name without its ending",
     [](Options& options, const std::string&) { options.action = Options::Action::Add; }},
    {"as", "TICKER", "with --add and one file: its ticker",
     [](Options& options, const std::string& value) {
       options.add.ticker = filledIn("--as", value, "a ticker");
     }},
    {"replace", "", "with --add: in place of another file of the ticker",
     [](Options& options, const std::string&) { options.add.replace = true; }},
    {"log-level", "LEVEL", "error, warning, info or debug (info)",
     [](Options& options, const std::string& value) {
       options.settings.sources.log = Log(levelOf(value));
     }},
    {"runtime-folder", "", "print the name of the user's own folder for sockets, locks and the log",
     [](Options& options, const std::string&) { options.action = Options::Action::RuntimeFolder; }},
    {"help", "", "show this text",
     [](Options& options, const std::string&) { options.action = Options::Action::Help; }},
    {"version", "", "show the version",
     [](Options& options, const std::string&) { options.action = Options::Action::Version; }},
});

// For the library: what it finds is a place in the list above.
std::vector<option> optionsOf() {
  std::vector<option> result;
  for (const Flag& flag : kFlags) {
    const bool alone = flag.value.empty() || flag.value.ends_with("...");
    result.push_back({flag.name, alone ? no_argument : required_argument, nullptr,
                      kFirst + static_cast<int>(result.size())});
  }
  result.push_back({});
  return result;
}

std::string flagHelp(const Flag& flag) {
  constexpr std::size_t kColumn = 21;
  std::string text = std::string("  --") + flag.name + " " + std::string(flag.value);
  text.resize(kColumn, ' ');
  for (const char c : flag.help) {
    text += c;
    text.append(c == '\n' ? kColumn : 0, ' ');
  }
  return text + "\n";
}

// What a single flag cannot show.
void checkTogether(const Options& options) {
  const auto& [files, ticker, replace] = options.add;
  if (options.action == Options::Action::Add) {
    if (files.empty()) {
      throw BadFlag("--add needs a file");
    }
    if (files.size() > 1 && !ticker.empty()) {
      throw BadFlag("--as is for one file");
    }
  } else if (!files.empty()) {
    throw BadFlag("unexpected argument " + escaped(files.front().string()));
  } else if (!ticker.empty() || replace) {
    throw BadFlag("--as and --replace need --add");
  }
}

}  // namespace

Options parseOptions(int argc, char* const* argv) {
  Options options;
  options.settings.sources.prices = userPrices();
  options.providerFile = userProviderFile();
  const std::vector<option> known = optionsOf();
  opterr = 0;
  optind = 0;  // a fresh start, also for a second command line in one process
  for (;;) {
    const int at = optind == 0 ? 1 : optind;
    const int found = ::getopt_long(argc, argv, "-:", known.data(), nullptr);
    if (found == -1) {
      break;
    }
    if (found == ':') {
      throw BadFlag(escaped(argv[at]) + " needs a value");
    }
    if (found == '?') {
      throw BadFlag("unknown or ill-formed flag " + escaped(argv[at]));
    }
    const std::string value = optarg != nullptr ? optarg : "";
    if (found == kArgument) {
      options.add.files.emplace_back(value);
    } else {
      kFlags.at(static_cast<std::size_t>(found - kFirst)).apply(options, value);
    }
  }
  options.add.files.insert(options.add.files.end(), argv + optind, argv + argc);  // after --
  checkTogether(options);
  return options;
}

std::string helpText() {
  std::string text =
      "Usage: quintara-quotes [FLAG...]\n"
      "       quintara-quotes --check SYMBOL | --list | --add FILE... [--as TICKER] [--replace]\n"
      "\n"
      "Serves price tables and quotes to Quintara on this computer: the trader's own price files "
      "first,\n"
      "then a provider on the network if there are settings for one, then a demonstration market "
      "(DEMO,\n"
      "DOWN, RANGE, PENNY, INDEX).\n"
      "\n";
  for (const Flag& flag : kFlags) {
    text += flagHelp(flag);
  }
  return text +
         "\n"
         "Exit codes: 0 stopped by SIGINT or SIGTERM, or done; 1 failed, no prices to show, or a "
         "file that was\n"
         "not added; 2 bad flag, or bad settings of a provider when --check finds no prices; 3 "
         "port\n"
         "taken; 4 another service of yours runs already.\n";
}

}  // namespace quintara::quotes
