#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <stop_token>

#include "service/desk/quote_desk.hpp"
#include "service/http/port_taken.hpp"
#include "service/prices/calendar.hpp"
#include "service/provider/provider_settings.hpp"
#include "service/system/log.hpp"

namespace quintara::quotes {

class Listener;

struct ServerSettings {
  int historyPort = 8470;  ///< 0 for any free port
  int quotesPort = 8471;
  std::filesystem::path prices;  ///< the trader's own files; empty for none
  Today today = localToday;
  Log log{LogLevel::Info};
  std::optional<ProviderSettings> provider = std::nullopt;
};

/// The trader's own files first, then the provider, then the demonstration market. A source that
/// can keep a client waiting gives up when `stop` is requested.
PriceSources standardSources(const ServerSettings& settings, const std::stop_token& stop);

/// The quote service: two ports of 127.0.0.1, one for the historical tables and one for the quotes.
/// Works in threads of its own and may live inside another program.
class Server {
 public:
  explicit Server(ServerSettings settings);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// Both ports answer when it returns; a server that runs is stopped first. Throws PortTaken or
  /// std::system_error, with no port taken.
  void start();
  /// Replies under way have half a second to finish. A stopped server can be started again.
  void stop();

  int historyPort() const;  ///< the ports in use, 0 while stopped
  int quotesPort() const;
  bool failed() const;  ///< a port stopped answering without stop()

 private:
  ServerSettings settings_;
  std::stop_source stop_;
  std::unique_ptr<QuoteDesk> desk_;
  std::unique_ptr<Listener> history_;
  std::unique_ptr<Listener> quotes_;
};

}  // namespace quintara::quotes
