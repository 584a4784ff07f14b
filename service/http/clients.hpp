#pragma once

#include <microhttpd.h>

#include <atomic>
#include <chrono>
#include <initializer_list>
#include <map>

#include "service/http/endpoint.hpp"

namespace quintara::quotes {

/// A connection, from its being accepted until the library has closed it.
struct Client {
  using Clock = std::chrono::steady_clock;
  /// It says its request, waits for the reply, takes the reply; or it was shut down.
  enum class State { Asking, Waiting, Taking, CutOff };

  const Endpoint* endpoint = nullptr;
  Clock::time_point until{};  ///< when it is shut down
  State state = State::Asking;
  MHD_Connection* connection = nullptr;  ///< while it waits
  std::atomic<bool> answered = false;    ///< while it waits; set by the worker that is at it
  std::size_t size = 0;                  ///< of the reply that it takes
};

/// The connections of a server by their sockets, which belong to the library, and what they may
/// cost. A request has to be said within 5 seconds in all, however slowly its bytes trickle, and
/// its reply to be taken within 10. Who is late or has to make room is shut down, and the library
/// closes the connection then; nobody is who waits for a reply, because a worker is at it.
class Clients {
 public:
  using Clock = Client::Clock;

  Clients();

  void add(int socket, const Endpoint& endpoint);
  void remove(int socket) { clients_.erase(socket); }
  Client& at(int socket) { return clients_.at(socket); }
  bool isEmpty() const { return clients_.empty(); }
  bool isFull() const { return clients_.size() >= most_; }
  std::size_t most() const { return most_; }

  /// The client takes a reply of this many bytes. When much is to be taken already, others that
  /// have not done so make room.
  void letTake(Client& client, std::size_t size);
  bool canMakeRoom() { return firstOf({State::Asking, State::Taking}) != nullptr; }
  /// Shuts down the client whose time would be up first, if there is one.
  bool makeRoom() { return cutOff(firstOf({State::Asking, State::Taking})); }
  void cutOffTheLate();
  /// From now on nobody gets more time than this, and who has not said a request gets none.
  void endAt(Clock::time_point end);
  Clock::time_point nextEnd();  ///< when somebody's time is up next

  template <class Action>
  void forEachWaiting(Action action) {
    for (auto& [socket, client] : clients_) {
      if (client.state == State::Waiting) {
        action(client);
      }
    }
  }

 private:
  using State = Client::State;
  using Map = std::map<int, Client>;

  Map::value_type* firstOf(std::initializer_list<State> states);
  static bool cutOff(Map::value_type* client);
  std::size_t bytesToTake() const;

  const std::size_t most_;
  Clock::time_point end_ = Clock::time_point::max();
  Map clients_;
};

}  // namespace quintara::quotes
