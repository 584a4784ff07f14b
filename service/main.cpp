#include <malloc.h>

#include <csignal>
#include <ctime>
#include <exception>
#include <filesystem>
#include <iostream>

#include "runtime/runtime_folder.hpp"
#include "service/commands/add_prices.hpp"
#include "service/commands/check.hpp"
#include "service/commands/list_prices.hpp"
#include "service/desk/user_settings.hpp"
#include "service/options.hpp"
#include "service/server.hpp"
#include "service/text/text.hpp"

namespace {

using namespace quintara::quotes;

constexpr int kLargeBlock = 1 << 20;  // bytes

constexpr int kFailed = 1;
constexpr int kBadSetting = 2;
constexpr int kPortTaken = 3;
constexpr int kAlreadyRunning = 4;

// Blocked before the first thread starts, so that they reach nobody but the wait below.
sigset_t blockStopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return signals;
}

int serve(const ServerSettings& settings) {
  // What a large file took goes back at once. Else the C library begins to keep it, for each
  // thread.
  ::mallopt(M_MMAP_THRESHOLD, kLargeBlock);
  const sigset_t signals = blockStopSignals();
  Server server(settings);
  server.start();
  std::error_code error;
  if (!settings.sources.prices.empty() &&
      !std::filesystem::is_directory(settings.sources.prices, error)) {
    settings.sources.log.info("no own prices: there is no folder " +
                              escaped(settings.sources.prices.string()));
  }
  const timespec once{1, 0};
  while (sigtimedwait(&signals, nullptr, &once) < 0) {
    if (server.failed()) {
      return kFailed;
    }
  }
  server.stop();
  settings.sources.log.info("stopped");
  return 0;
}

const std::filesystem::path& priceFolder(const SourceSettings& sources) {
  if (sources.prices.empty()) {
    throw BadSettings("neither HOME nor XDG_DATA_HOME says where own prices are; --prices does");
  }
  return sources.prices;
}

int checkSymbol(const Options& options) {
  SourceSettings sources = options.settings.sources;
  sources.log = Log::none();  // what it says stands in the report
  if (check(sources, options.ticker, localToday(), std::cout)) {
    return 0;
  }
  if (const std::string hint = withoutProvider(sources, options.providerFile); !hint.empty()) {
    std::cout << hint << "\n";
  }
  return sources.providerProblem.empty() ? kFailed : kBadSetting;
}

int run(int argc, char** argv) {
  Options options = parseOptions(argc, argv);
  SourceSettings& sources = options.settings.sources;
  switch (options.action) {
    case Options::Action::Help:
      std::cout << helpText();
      return 0;
    case Options::Action::Version:
      std::cout << "quintara-quotes " QUINTARA_VERSION "\n";
      return 0;
    case Options::Action::Check:
      readProvider(options.providerFile, options.providerNamed, sources);
      return checkSymbol(options);
    case Options::Action::List:
      return listPrices(priceFolder(sources), std::cout) ? 0 : kFailed;
    case Options::Action::Add:
      return addPrices(priceFolder(sources), options.add, localToday(), std::cout) ? 0 : kFailed;
    case Options::Action::RuntimeFolder:
      std::cout << quintara::runtimeFolder() << "\n";
      return 0;
    case Options::Action::Serve:
      break;
  }
  readProvider(options.providerFile, options.providerNamed, sources);
  return serve(options.settings);
}

int complain(const std::exception& error, int code) {
  std::cerr << "quintara-quotes: error: " << error.what() << "\n";
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader of the log that goes away must not end the service
  try {
    return run(argc, argv);
  } catch (const BadFlag& error) {
    complain(error, kBadSetting);
    std::cerr << "Try quintara-quotes --help\n";
    return kBadSetting;
  } catch (const BadSettings& error) {
    return complain(error, kBadSetting);
  } catch (const PortTaken& error) {
    return complain(error, kPortTaken);
  } catch (const AlreadyRunning& error) {
    return complain(error, kAlreadyRunning);
  } catch (const std::exception& error) {
    return complain(error, kFailed);
  }
}
