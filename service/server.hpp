#pragma once

#include <memory>
#include <stop_token>

#include "service/desk/standard_sources.hpp"
#include "service/http/port_taken.hpp"
#include "service/prices/calendar.hpp"

namespace quintara::quotes {

class HttpServer;

struct ServerSettings {
  int historyPort = 8470;  ///< 0 for any free port
  int quotesPort = 8471;
  SourceSettings sources;
  Today today = localToday;
};

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

  int historyPort() const { return historyPort_; }  ///< the ports in use, 0 before the first start
  int quotesPort() const { return quotesPort_; }
  bool failed() const;  ///< stopped answering without stop()

 private:
  ServerSettings settings_;
  std::stop_source stop_;
  std::unique_ptr<QuoteDesk> desk_;
  int historyPort_ = 0;
  int quotesPort_ = 0;
  std::unique_ptr<HttpServer> http_;
};

}  // namespace quintara::quotes
