#pragma once

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <string>

#include "service/system/file_handle.hpp"

// Clients that can misbehave: they send what they are told and read until the other side closes.
namespace quintara::quotes {

template <class Address>
FileHandle connectedTo(const Address& address, int family) {
  FileHandle client(::socket(family, SOCK_STREAM, 0));
  const int small = 4096;  // so that a long reply waits for its reader
  ::setsockopt(client.get(), SOL_SOCKET, SO_RCVBUF, &small, sizeof small);
  const timeval patience{20, 0};
  ::setsockopt(client.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  EXPECT_EQ(::connect(client.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
            0);
  return client;
}
inline FileHandle connected(int port) {
  const auto bigEndian = htons(static_cast<std::uint16_t>(port));
  return connectedTo(sockaddr_in{AF_INET, bigEndian, {htonl(INADDR_LOOPBACK)}, {}}, AF_INET);
}
inline FileHandle connected(const std::string& path) {
  sockaddr_un address{AF_UNIX, {}};
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  return connectedTo(address, AF_UNIX);
}

inline bool send(const FileHandle& client, const std::string& text) {
  return ::send(client.get(), text.data(), text.size(), MSG_NOSIGNAL) > 0;
}

inline std::string receive(const FileHandle& client) {
  std::string reply(100'000, '\0');
  const auto got = ::recv(client.get(), reply.data(), reply.size(), MSG_WAITALL);
  return reply.substr(0, static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
}

// `where` is a port or a socket's name.
template <class Where>
std::string ask(const Where& where, const std::string& request) {
  const FileHandle client = connected(where);
  send(client, request);
  return receive(client);
}

// The reply, which has to be as long as it says: a lost connection may cut it short.
template <class Where>
std::string wholeReply(const Where& where, const std::string& request) {
  const std::string reply = ask(where, request);
  const auto length = std::to_string(reply.size() - reply.find("\r\n\r\n") - 4);
  EXPECT_THAT(reply, testing::HasSubstr("\r\nContent-Length: " + length + "\r\n")) << request;
  return reply;
}

}  // namespace quintara::quotes
