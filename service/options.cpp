#include "service/options.hpp"

#include <getopt.h>

#include <array>

#include "service/desk/user_settings.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

enum Flag {
  kArgument = 1,  // what is no flag, because of the - in front of the short flags
  kHistoryPort,
  kQuotesPort,
  kPrices,
  kProvider,
  kCheck,
  kList,
  kAdd,
  kAs,
  kReplace,
  kLogLevel,
  kRuntimeFolder,
  kHelp,
  kVersion
};

constexpr auto kFlags = std::to_array<option>({
    {"history-port", required_argument, nullptr, kHistoryPort},
    {"quotes-port", required_argument, nullptr, kQuotesPort},
    {"prices", required_argument, nullptr, kPrices},
    {"provider", required_argument, nullptr, kProvider},
    {"check", required_argument, nullptr, kCheck},
    {"list", no_argument, nullptr, kList},
    {"add", no_argument, nullptr, kAdd},
    {"as", required_argument, nullptr, kAs},
    {"replace", no_argument, nullptr, kReplace},
    {"log-level", required_argument, nullptr, kLogLevel},
    {"runtime-folder", no_argument, nullptr, kRuntimeFolder},
    {"help", no_argument, nullptr, kHelp},
    {"version", no_argument, nullptr, kVersion},
    {nullptr, 0, nullptr, 0},
});

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

void apply(int flag, Options& options) {
  const std::string value = optarg != nullptr ? optarg : "";
  switch (flag) {
    case kHistoryPort:
      options.settings.historyPort = portOf("--history-port", value);
      break;
    case kQuotesPort:
      options.settings.quotesPort = portOf("--quotes-port", value);
      break;
    case kPrices:
      options.settings.sources.prices = filledIn("--prices", value, "the name of a folder");
      break;
    case kProvider:
      options.providerFile = filledIn("--provider", value, "the name of a file");
      options.providerNamed = true;
      break;
    case kCheck:
      options.ticker = filledIn("--check", value, "a symbol");
      options.action = Options::Action::Check;
      break;
    case kList:
      options.action = Options::Action::List;
      break;
    case kAdd:
      options.action = Options::Action::Add;
      break;
    case kAs:
      options.add.ticker = filledIn("--as", value, "a ticker");
      break;
    case kReplace:
      options.add.replace = true;
      break;
    case kArgument:
      options.add.files.emplace_back(value);
      break;
    case kLogLevel:
      options.settings.sources.log = Log(levelOf(value));
      break;
    case kRuntimeFolder:
      options.action = Options::Action::RuntimeFolder;
      break;
    case kHelp:
      options.action = Options::Action::Help;
      break;
    default:
      options.action = Options::Action::Version;
      break;
  }
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
  opterr = 0;
  optind = 0;  // a fresh start, also for a second command line in one process
  for (;;) {
    const int at = optind == 0 ? 1 : optind;
    const int flag = ::getopt_long(argc, argv, "-:", kFlags.data(), nullptr);
    if (flag == -1) {
      break;
    }
    if (flag == ':') {
      throw BadFlag(escaped(argv[at]) + " needs a value");
    }
    if (flag == '?') {
      throw BadFlag("unknown or ill-formed flag " + escaped(argv[at]));
    }
    apply(flag, options);
  }
  options.add.files.insert(options.add.files.end(), argv + optind, argv + argc);  // after --
  checkTogether(options);
  return options;
}

std::string helpText() {
  return R"(Usage: quintara-quotes [FLAG...]
       quintara-quotes --check SYMBOL | --list | --add FILE... [--as TICKER] [--replace]

Serves price tables and quotes to Quintara on this computer: the trader's own price files first,
then a provider on the network if there are settings for one, then a demonstration market (DEMO,
DOWN, RANGE, PENNY, INDEX).

  --history-port N   serve /table.csv on this port of 127.0.0.1 (0 picks a free one)
                     and not on the socket history in the runtime folder
  --quotes-port N    serve /d/quotes.csv on this port, and not on the socket quotes
  --prices DIR       folder of own prices, a file TICKER.csv, .txt or .tsv each
                     (quintara/prices in the user's data directory)
  --provider FILE    settings of the provider (quintara/provider.conf in the user's configuration
                     directory)
  --check SYMBOL     ask for one symbol as the service does; show who answers, how the answer was
                     read, what is wrong with it and what a chart gets
  --list             show what the folder of own prices offers, one line a ticker
  --add FILE...      read price files and put them into the folder of own prices; the ticker is the
                     file's name without its ending
  --as TICKER        with --add and one file: its ticker
  --replace          with --add: in place of another file of the ticker
  --log-level LEVEL  error, warning, info or debug (info)
  --runtime-folder   print the name of the user's own folder for sockets, locks and the log
  --help             show this text
  --version          show the version

Exit codes: 0 stopped by SIGINT or SIGTERM, or done; 1 failed, no prices to show, or a file that was
not added; 2 bad flag, or bad settings of a provider when --check finds no prices; 3 port
taken; 4 another service of yours runs already.
)";
}

}  // namespace quintara::quotes
