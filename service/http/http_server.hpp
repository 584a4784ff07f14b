#pragma once

#include <microhttpd.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "service/http/clients.hpp"
#include "service/http/endpoint.hpp"
#include "service/http/workers.hpp"
#include "service/system/log.hpp"

namespace quintara::quotes {

class Exchange;

/// Answers one GET request on each connection to its endpoints. One thread looks after all
/// connections and waits for none of them in particular; the replies are made by workers.
class HttpServer {
 public:
  /// Answers from now on. Throws std::system_error or std::runtime_error if it cannot.
  HttpServer(std::vector<Endpoint> endpoints, std::size_t workers, Log log);
  /// Within about a second: who has said a request has half a second to get the reply.
  ~HttpServer();
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  bool failed() const { return failed_; }  ///< stopped answering without having been asked to

 private:
  using Clock = Client::Clock;
  struct Stop {
    void operator()(MHD_Daemon* daemon) const { MHD_stop_daemon(daemon); }
  };
  using Daemon = std::unique_ptr<MHD_Daemon, Stop>;

  Daemon startDaemon();
  void run();
  void serve();
  void turn();
  void windUp();
  bool accepts();
  int patience();
  void wait();
  void acceptFrom(const Endpoint& endpoint);
  bool acceptOne(const Endpoint& endpoint);
  bool goOnAfter(int error);
  MHD_Result handle(MHD_Connection* connection, const char* path, const char* method,
                    Exchange& exchange);
  void wake() const;

  const std::vector<Endpoint> endpoints_;
  const Log log_;
  const FileHandle woken_;  ///< readable when a worker or whoever stops wants attention
  std::atomic<bool> stopping_ = false;
  std::atomic<bool> failed_ = false;
  Clients clients_;
  Clock::time_point acceptAgain_{};  ///< after a failure
  Clock::time_point end_ = Clock::time_point::max();
  Daemon daemon_;
  std::unique_ptr<Workers> workers_;
  std::jthread thread_;  ///< uses all of the above
};

}  // namespace quintara::quotes
