#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

namespace quintara {

struct TransferLimits {
  std::chrono::milliseconds time{60'000};     ///< for all of a transfer, redirects included
  std::size_t bytes = std::size_t{64} << 20;  ///< of the body, unpacked
};

/// What to ask for, and how.
struct TransferRequest {
  std::string url{};               ///< goes out as it stands; no user's name in it
  std::string protocols = "http";  ///< for redirects, too; such as "http,https"
  TransferLimits limits{};
  std::string agent{};             ///< what the client calls itself; empty for nothing
  std::string header{};            ///< one more for the server, none for a proxy; empty for none
  bool unpack = false;             ///< the reply may come compressed
  bool followRedirects = false;    ///< kMostRedirects of them; otherwise the answer tells where to
  bool refuseErrors = false;       ///< a status of 400 or above is a problem
  std::filesystem::path caFile{};  ///< whom to trust instead of the system's authorities
};

inline constexpr int kMostRedirects = 4;

/// What came back.
struct TransferAnswer {
  long status = 0;  ///< of HTTP; 0 if nothing usable came
  std::string body;
  std::string redirect;  ///< where the reply sends the client; empty for nowhere
  std::string problem;   ///< one line in our words; empty if a reply came, whatever its status
  std::string detail;    ///< of the problem, in words from outside that show no address
  bool noAuthorities = false;  ///< the problem: nobody to trust was found
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
