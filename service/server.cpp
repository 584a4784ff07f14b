#include "service/server.hpp"

#include <utility>
#include <vector>

#include "service/http/http_server.hpp"
#include "service/http/listening_socket.hpp"
#include "service/provider/provider_source.hpp"

namespace quintara::quotes {
namespace {

// However many wait for the provider, some are left for own files.
constexpr std::size_t kWorkers = ProviderSource::kMostAtOnce + 4;

}  // namespace

Server::Server(ServerSettings settings) : settings_(std::move(settings)) {}

Server::~Server() { stop(); }

void Server::start() {
  stop();
  stop_ = std::stop_source();
  desk_ = std::make_unique<QuoteDesk>(standardSources(settings_.sources, stop_.get_token()),
                                      settings_.today);
  std::vector<Endpoint> endpoints;
  endpoints.push_back({listenOnLoopback(settings_.historyPort), "/table.csv",
                       [this](const std::string& target) { return desk_->table(target); }});
  endpoints.push_back({listenOnLoopback(settings_.quotesPort), "/d/quotes.csv",
                       [this](const std::string& target) { return desk_->quote(target); }});
  historyPort_ = portOf(endpoints[0].listening);
  quotesPort_ = portOf(endpoints[1].listening);
  http_ = std::make_unique<HttpServer>(std::move(endpoints), kWorkers, settings_.sources.log);
  settings_.sources.log.info("listening on 127.0.0.1:" + std::to_string(historyPort()) +
                             " (history) and 127.0.0.1:" + std::to_string(quotesPort()) +
                             " (quotes)");
}

void Server::stop() {
  stop_.request_stop();
  http_.reset();
}

bool Server::failed() const { return http_ && http_->failed(); }

}  // namespace quintara::quotes
