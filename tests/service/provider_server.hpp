#pragma once

#include <httplib.h>

#include <cstdlib>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "temporary_folder.hpp"

namespace quintara::quotes {

// Makes a certificate authority and a certificate for 127.0.0.1 of its own.
struct Certificates {
  Certificates() {
    const std::string make = "openssl req -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes ";
    const std::string commands = "cd " + folder.path.string() + " && exec 2>/dev/null && " + make +
                                 "-x509 -keyout ca.key -out ca.pem -days 2 -subj /CN=Test && " +
                                 make + "-keyout key.pem -out request -subj /CN=Test && " +
                                 "echo subjectAltName=IP:127.0.0.1 >names && " +
                                 "openssl x509 -req -in request -CA ca.pem -CAkey ca.key " +
                                 "-CAcreateserial -out cert.pem -days 2 -extfile names";
    if (std::system(commands.c_str()) != 0) {
      throw std::runtime_error("openssl made no certificates");
    }
  }
  std::string file(const char* name) const { return (folder.path / name).string(); }

  TemporaryFolder folder;
};

// Answers every request as it is told, and remembers the targets. Takes over the server.
class ProviderServer {
 public:
  using Answer = std::function<void(const httplib::Request&, httplib::Response&)>;

  ProviderServer(std::unique_ptr<httplib::Server> server, Answer answer)
      : server_(std::move(server)) {
    server_->set_pre_routing_handler([this, answer](const auto& request, auto& response) {
      std::unique_lock lock(mutex_);
      targets_.push_back(request.target);
      lock.unlock();
      answer(request, response);
      return httplib::Server::HandlerResponse::Handled;
    });
    port = std::to_string(server_->bind_to_any_port("127.0.0.1"));
    thread_ = std::thread([this] { server_->listen_after_bind(); });
  }
  ~ProviderServer() {
    while (!server_->is_running()) {
    }
    server_->stop();
    thread_.join();
  }

  std::vector<std::string> targets() {
    const std::lock_guard lock(mutex_);
    return targets_;
  }

  std::string port;

 private:
  std::unique_ptr<httplib::Server> server_;
  std::mutex mutex_;
  std::vector<std::string> targets_;
  std::thread thread_;
};

}  // namespace quintara::quotes
