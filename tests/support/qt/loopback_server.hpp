#pragma once

#include <string>

#include "support/faulty_server.hpp"

namespace quintara::test {

/// Answers every request with the same bytes.
struct LoopbackServer : FaultyServer {
  explicit LoopbackServer(const std::string& reply) { serve({reply}, {reply}); }
  [[nodiscard]] std::string url(const std::string& target) const {
    return "http://" + host() + target;
  }
};

}  // namespace quintara::test
