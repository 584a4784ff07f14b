#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

namespace quintara {

/// Headers and trailers have a limit of their own: 256 KB in all.
struct TransferLimits {
  std::chrono::milliseconds time{60'000};    ///< for all of a transfer
  std::size_t bytes = std::size_t{8} << 20;  ///< of the body, unpacked
  std::size_t lines = 200'000;               ///< line feeds of the body
};

/// What to ask for, and how.
struct TransferRequest {
  std::string url{};               ///< goes out as it stands; no user's name in it
  std::filesystem::path socket{};  ///< a Unix socket to ask over; empty for none
  std::string protocols = "http";  ///< such as "http,https"
  TransferLimits limits{};
  std::string agent{};             ///< what the client calls itself; empty for nothing
  std::string header{};            ///< one more for the server, none for a proxy; empty for none
  bool unpack = false;             ///< the reply may come compressed
  bool refuseErrors = false;       ///< a status of 400 or above is a problem
  bool redirected = false;         ///< by another computer: leading to this one is a problem
  std::filesystem::path caFile{};  ///< whom to trust besides the system's authorities
};

/// No redirect is followed; who does it follows no more than these.
inline constexpr int kMostRedirects = 4;
inline constexpr std::size_t kMostHeaderBytes = std::size_t{256} << 10;

/// What came back.
struct TransferAnswer {
  long status = 0;  ///< of HTTP; 0 if nothing usable came
  std::string body;
  std::string redirect;  ///< where the reply sends the client; empty for nowhere
  std::string problem;   ///< one line in our words; empty if a reply came, whatever its status
  std::string detail;    ///< of the problem, in words from outside that show no address
  bool noAuthorities = false;  ///< the problem: nobody to trust was found
  bool here = false;  ///< it came from this computer: every address that was tried is its own
};

/// One GET over HTTP or HTTPS, driven by its caller: through the proxy that the environment names,
/// never on the way to this computer. Certificates are verified.
class Transfer {
 public:
  /// Throws TransferFailed when libcurl cannot be used.
  explicit Transfer(const TransferRequest& request);
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;
  ~Transfer();

  /// Goes on as far as it can without waiting; true when the answer is there. Otherwise waits for
  /// the network, for `patience` at most. Throws TransferFailed when libcurl cannot be used.
  bool advance(std::chrono::milliseconds patience);
  /// Once, after `advance` said so.
  [[nodiscard]] TransferAnswer takeAnswer();

 private:
  struct State;
  const std::unique_ptr<State> state_;
};

}  // namespace quintara
