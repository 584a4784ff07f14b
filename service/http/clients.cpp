#include "service/http/clients.hpp"

#include <sys/resource.h>
#include <sys/socket.h>

#include <algorithm>
#include <numeric>

namespace quintara::quotes {
namespace {

constexpr std::chrono::seconds kRequestTime{5};
constexpr std::chrono::seconds kReplyTime{10};
constexpr std::size_t kMostClients = 500;
constexpr std::size_t kMostToTake = 64 * std::size_t{1024} * 1024;  // bytes, of all together

// Files and providers need descriptors, too.
std::size_t mostClients() {
  rlimit descriptors{};
  ::getrlimit(RLIMIT_NOFILE, &descriptors);
  return std::clamp<std::size_t>(descriptors.rlim_cur / 2, 1, kMostClients);
}

}  // namespace

Clients::Clients() : most_(mostClients()) {}

void Clients::add(int socket, const Endpoint& endpoint) {
  Client& client = clients_[socket];
  client.endpoint = &endpoint;
  client.until = Clock::now() + kRequestTime;
}

void Clients::letTake(Client& client, std::size_t size) {
  while (bytesToTake() + size > kMostToTake && cutOff(firstOf({State::Taking}))) {
  }
  client.state = State::Taking;
  client.size = size;
  client.until = std::min(end_, Clock::now() + kReplyTime);
}

std::size_t Clients::bytesToTake() const {
  return std::accumulate(
      clients_.begin(), clients_.end(), std::size_t{0},
      [](std::size_t sum, const auto& client) { return sum + client.second.size; });
}

Clients::Map::value_type* Clients::firstOf(std::initializer_list<State> states) {
  Map::value_type* first = nullptr;
  for (auto& client : clients_) {
    const bool counts =
        std::find(states.begin(), states.end(), client.second.state) != states.end();
    if (counts && (first == nullptr || client.second.until < first->second.until)) {
      first = &client;
    }
  }
  return first;
}

bool Clients::cutOff(Map::value_type* client) {
  if (client == nullptr) {
    return false;
  }
  ::shutdown(client->first, SHUT_RDWR);
  client->second.state = State::CutOff;
  client->second.size = 0;
  return true;
}

void Clients::cutOffTheLate() {
  while (nextEnd() <= Clock::now()) {
    makeRoom();
  }
}

void Clients::endAt(Clock::time_point end) {
  end_ = end;
  for (auto& client : clients_) {
    if (client.second.state == State::Asking) {
      cutOff(&client);
    }
    client.second.until = std::min(client.second.until, end);
  }
}

Clients::Clock::time_point Clients::nextEnd() {
  const auto* first = firstOf({State::Asking, State::Taking});
  return first != nullptr ? first->second.until : Clock::time_point::max();
}

}  // namespace quintara::quotes
