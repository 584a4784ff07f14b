#pragma once

#include <httplib.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include "service/http/port_taken.hpp"
#include "service/system/file_handle.hpp"
#include "service/system/log.hpp"

namespace quintara::quotes {

/// Serves one path on one port of 127.0.0.1, to GET requests that were meant for this computer.
/// Connections are closed after one reply.
class Listener : private httplib::Server {
 public:
  /// The reply body for a raw request target; throws Refusal.
  using Answer = std::function<std::string(const std::string& target)>;

  /// Takes the port, 0 for any free one. Throws PortTaken, or std::system_error when the port
  /// cannot be had for another reason.
  Listener(int port, std::string path, Answer answer, Log log);
  ~Listener() override;

  int port() const { return port_; }
  void start();
  void requestStop();                      ///< returns at once
  void stop();                             ///< within about a second; a second call does nothing
  bool failed() const { return failed_; }  // stopped serving without having been asked to

 private:
  void setUp();
  void accept();
  void reply(const httplib::Request& request, httplib::Response& response) const;
  bool process_and_close_socket(socket_t socket) override;

  const std::string path_;
  const Answer answer_;
  const Log log_;
  FileHandle listening_;  ///< a second handle: the library closes its own when it ends
  const int port_;
  FileHandle stopping_;  ///< readable from stop() on
  std::atomic<bool> stopped_ = false;
  std::atomic<bool> failed_ = false;
  std::thread thread_;
};

}  // namespace quintara::quotes
