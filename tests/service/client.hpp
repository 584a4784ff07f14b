#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <string>

#include "service/file_handle.hpp"

namespace quintara::quotes {

// A client that can misbehave: it sends what it is told and reads until the other side closes.
class Client {
 public:
  explicit Client(int port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    const int small = 4096;  // so that a long reply waits for its reader
    ::setsockopt(socket_.get(), SOL_SOCKET, SO_RCVBUF, &small, sizeof small);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(socket_.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  }

  bool send(const std::string& text) const {
    return ::send(socket_.get(), text.data(), text.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(text.size());
  }
  std::string receive() const {
    std::string reply;
    char part[4096];
    for (ssize_t got = 0; (got = ::recv(socket_.get(), part, sizeof part, 0)) > 0;) {
      reply.append(part, static_cast<std::size_t>(got));
    }
    return reply;
  }

 private:
  FileHandle socket_;
};

inline std::string exchange(int port, const std::string& request) {
  const Client client(port);
  client.send(request);
  return client.receive();
}

}  // namespace quintara::quotes
