#pragma once

#include <memory>
#include <optional>
#include <stop_token>
#include <string>

#include "service/desk/standard_sources.hpp"
#include "service/http/own_sockets.hpp"
#include "service/http/port_taken.hpp"
#include "service/prices/calendar.hpp"

namespace quintara::quotes {

class HttpServer;

struct ServerSettings {
  /// Of 127.0.0.1, 0 for any free one; none for the socket `history` or `quotes` in the user's own
  /// runtime folder.
  std::optional<int> historyPort;
  std::optional<int> quotesPort;
  SourceSettings sources;
  Today today = localToday;
};

/// The quote service: two sockets or ports, one for the historical tables and one for the quotes. A
/// user has one at most that uses sockets. Works in threads of its own and may live inside another
/// program.
class Server {
 public:
  explicit Server(ServerSettings settings);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// Both answer when it returns; a server that runs is stopped first. Throws PortTaken,
  /// AlreadyRunning, RuntimeFolderUnusable or std::system_error, with nothing taken.
  void start();
  /// Replies under way have half a second to finish. A stopped server can be started again.
  void stop();

  int historyPort() const { return historyPort_; }  ///< in use, 0 for a socket
  int quotesPort() const { return quotesPort_; }
  bool failed() const;  ///< stopped answering without stop()

 private:
  ServerSettings settings_;
  std::stop_source stop_;
  std::unique_ptr<QuoteDesk> desk_;
  std::unique_ptr<OwnSockets> sockets_;
  std::unique_ptr<HttpServer> http_;
  int historyPort_ = 0;
  int quotesPort_ = 0;
};

}  // namespace quintara::quotes
