#include "service/server.hpp"

#include <string>
#include <utility>
#include <vector>

#include "runtime/runtime_folder.hpp"
#include "service/http/http_server.hpp"
#include "service/http/listening_socket.hpp"
#include "service/provider/provider_source.hpp"
#include "service/sources/price_folder.hpp"

namespace quintara::quotes {
namespace {

// However many wait for the provider or a large file, some are left for small ones.
constexpr std::size_t kWorkers = ProviderSource::kMostAtOnce + PriceFolder::kMostLarge + 4;

}  // namespace

Server::Server(ServerSettings settings) : settings_(std::move(settings)) {}

Server::~Server() { stop(); }

void Server::start() {
  stop();
  stop_ = std::stop_source();
  desk_ = std::make_unique<QuoteDesk>(
      standardSources(settings_.sources, stop_.get_token()), settings_.today,
      [log = settings_.sources.log](const std::string& why) { log.warning(why); });
  std::unique_ptr<OwnSockets> sockets;
  if (!settings_.historyPort || !settings_.quotesPort) {
    sockets = std::make_unique<OwnSockets>(runtimeFolder());
  }
  std::vector<Endpoint> endpoints;
  const auto add = [&](std::optional<int> port, const char* name, const char* path, auto answer) {
    endpoints.push_back({port ? Endpoint::Kind::Port : Endpoint::Kind::OwnUser,
                         port ? listenOnLoopback(*port) : sockets->listen(name), path, answer});
    return addressOf(endpoints.back().listening) + " (" + name + ")";
  };
  const std::string history =
      add(settings_.historyPort, "history", "/table.csv",
          [this](const std::string& target) { return desk_->table(target); });
  const std::string quotes =
      add(settings_.quotesPort, "quotes", "/d/quotes.csv",
          [this](const std::string& target) { return desk_->quote(target); });
  historyPort_ = portOf(endpoints[0].listening);
  quotesPort_ = portOf(endpoints[1].listening);
  http_ = std::make_unique<HttpServer>(std::move(endpoints), kWorkers, settings_.sources.log);
  sockets_ = std::move(sockets);
  settings_.sources.log.info("listening on " + history + " and " + quotes);
}

void Server::stop() {
  stop_.request_stop();
  http_.reset();
  sockets_.reset();
}

bool Server::failed() const { return http_ && http_->failed(); }

}  // namespace quintara::quotes
