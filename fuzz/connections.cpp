// Bytes on a connection to the service's port. Input: what a client sends; the end of a request is
// added where it is missing.

#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <string>

#include "service/desk/request.hpp"
#include "service/http/http_server.hpp"
#include "service/http/listening_socket.hpp"
#include "service/system/file_handle.hpp"
#include "target.hpp"

namespace quintara::fuzz {

namespace {

using namespace quotes;

constexpr std::size_t kMostReply = 16'384;
constexpr std::string_view kEnd = "\r\n\r\n";

std::string answer(const std::string& target) {
  check(target.find('\n') == target.npos, "a target is within one line");
  if (target.find("refuse") != target.npos) throw Refusal(404, "refused");
  if (target.find("fail") != target.npos) throw std::runtime_error("failed\n" + target);
  return "reply\n";
}

void checkLogged(const std::string& line) {
  check(line.ends_with('\n') &&
            std::all_of(line.begin(), line.end() - 1, [](char c) { return c >= ' ' && c < 127; }),
        "a line of the log is one line of ASCII");
}

/// The fuzzer looks at the time by a signal, which must not end a wait for the service.
void goOnAfterAlarms() {
  struct sigaction action {};
  ::sigaction(SIGALRM, nullptr, &action);
  action.sa_flags |= SA_RESTART;
  ::sigaction(SIGALRM, &action, nullptr);
}

FileHandle connected(int port) {
  FileHandle client(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  // Closed by a reset, or the ports of closed connections would soon run out.
  const linger reset{1, 0};
  ::setsockopt(client.get(), SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const auto* plain = reinterpret_cast<const sockaddr*>(&address);
  check(::connect(client.get(), plain, sizeof address) == 0, "the service accepts connections");
  return client;
}

/// What the service sends until it closes the connection. A request that is not complete ends with
/// the client's side of the connection.
std::string exchange(int port, const std::string& request, bool complete) {
  const FileHandle client = connected(port);
  ::send(client.get(), request.data(), request.size(), MSG_NOSIGNAL);
  if (!complete) ::shutdown(client.get(), SHUT_WR);
  std::string reply;
  std::array<char, 4096> buffer{};
  for (;;) {
    const auto got = ::recv(client.get(), buffer.data(), buffer.size(), 0);
    if (got <= 0) return reply;
    reply.append(buffer.data(), static_cast<std::size_t>(got));
    check(reply.size() <= kMostReply, "a reply is bounded");
  }
}

void checkReply(std::string_view reply) {
  constexpr std::string_view kGoOn = "HTTP/1.1 100 Continue\r\n\r\n";
  if (reply.starts_with(kGoOn)) reply.remove_prefix(kGoOn.size());
  if (reply.empty()) return;
  const auto status = take(reply, '\r');
  check(status.size() >= 12 && status.starts_with("HTTP/1.1 "), "a reply begins with a status");
  const auto headers = reply.substr(0, reply.find(kEnd));
  check(headers.size() < reply.size(), "the headers end");
  // What is no request is answered by the library.
  constexpr std::array kOurs{"200", "403", "404", "405"};
  const bool ours = std::find(kOurs.begin(), kOurs.end(), status.substr(9, 3)) != kOurs.end();
  check(!ours || headers.find("\nServer: quintara-quotes/") != headers.npos,
        "every reply of ours is signed");
  check(headers.find("\nHTTP/1.1") == headers.npos, "there is one reply");
}

}  // namespace

/// The port that is served.
int served() {
  static std::vector<Endpoint> endpoints;
  endpoints.push_back({Endpoint::Kind::Port, listenOnLoopback(0), "/table.csv", answer});
  const int port = portOf(endpoints[0].listening);
  static const HttpServer server(std::move(endpoints), 2, Log(LogLevel::Debug, checkLogged));
  goOnAfterAlarms();
  return port;
}

void tryInput(std::string_view input) {
  static const int port = served();
  std::string request(input);
  bool complete = request.find(kEnd) != request.npos;
  // The side that ends first keeps its port for a minute, so clients do it now and then only.
  if (!complete && request.size() % 16 != 0) {
    request += kEnd;
    complete = true;
  }
  checkReply(exchange(port, request, complete));
}

}  // namespace quintara::fuzz
