#pragma once

#include <httplib.h>

#include <array>
#include <chrono>

#include "service/system/file_handle.hpp"

namespace quintara::quotes {

/// One accepted connection as the HTTP library sees it. A request has to arrive within a few
/// seconds in all, however slowly its bytes trickle, and within a few kilobytes; a reply has to be
/// taken within some seconds. Once `stopping` becomes readable nothing more is read, and a reply
/// under way has half a second left. Closes the socket.
class Connection : public httplib::Stream {
 public:
  Connection(FileHandle socket, int stopping);
  ~Connection() override;

  bool is_readable() const override;
  bool is_writable() const override;
  ssize_t read(char* target, size_t size) override;
  ssize_t write(const char* source, size_t size) override;
  void get_remote_ip_and_port(std::string& ip, int& port) const override;
  void get_local_ip_and_port(std::string& ip, int& port) const override;
  socket_t socket() const override { return socket_.get(); }

 private:
  using Clock = std::chrono::steady_clock;

  bool fill();
  bool waitToRead() const;
  bool waitToWrite();

  FileHandle socket_;
  int stopping_;
  Clock::time_point readUntil_;
  Clock::time_point writeUntil_{};  ///< set by the first write
  bool stopSeen_ = false;
  std::array<char, 4096> buffer_{};
  size_t begin_ = 0;
  size_t end_ = 0;
  size_t received_ = 0;
};

}  // namespace quintara::quotes
