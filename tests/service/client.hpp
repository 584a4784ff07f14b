#pragma once

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <sys/socket.h>

#include <string>

#include "service/system/file_handle.hpp"

// Clients that can misbehave: they send what they are told and read until the other side closes.
namespace quintara::quotes {

inline FileHandle connected(int port) {
  FileHandle client(::socket(AF_INET, SOCK_STREAM, 0));
  const int small = 4096;  // so that a long reply waits for its reader
  ::setsockopt(client.get(), SOL_SOCKET, SO_RCVBUF, &small, sizeof small);
  const auto bigEndian = htons(static_cast<std::uint16_t>(port));
  const sockaddr_in address{AF_INET, bigEndian, {htonl(INADDR_LOOPBACK)}, {}};
  EXPECT_EQ(::connect(client.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
            0);
  return client;
}

inline bool send(const FileHandle& client, const std::string& text) {
  return ::send(client.get(), text.data(), text.size(), MSG_NOSIGNAL) > 0;
}

inline std::string receive(const FileHandle& client) {
  std::string reply(100'000, '\0');
  const auto got = ::recv(client.get(), reply.data(), reply.size(), MSG_WAITALL);
  return reply.substr(0, static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
}

inline std::string ask(int port, const std::string& request) {
  const FileHandle client = connected(port);
  send(client, request);
  return receive(client);
}

// The reply, which has to be as long as it says: a lost connection may cut it short.
inline std::string exchange(int port, const std::string& request) {
  const std::string reply = ask(port, request);
  const auto length = std::to_string(reply.size() - reply.find("\r\n\r\n") - 4);
  EXPECT_THAT(reply, testing::HasSubstr("\r\nContent-Length: " + length + "\r\n")) << request;
  return reply;
}

}  // namespace quintara::quotes
