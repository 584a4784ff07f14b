#include "service/server.hpp"

#include <utility>

#include "service/http/listener.hpp"

namespace quintara::quotes {

Server::Server(ServerSettings settings) : settings_(std::move(settings)) {}

Server::~Server() { stop(); }

void Server::start() {
  stop();
  stop_ = std::stop_source();
  desk_ = std::make_unique<QuoteDesk>(standardSources(settings_.sources, stop_.get_token()),
                                      settings_.today);
  auto history = std::make_unique<Listener>(
      settings_.historyPort, "/table.csv",
      [this](const std::string& target) { return desk_->table(target); }, settings_.sources.log);
  auto quotes = std::make_unique<Listener>(
      settings_.quotesPort, "/d/quotes.csv",
      [this](const std::string& target) { return desk_->quote(target); }, settings_.sources.log);
  history->start();
  quotes->start();
  history_ = std::move(history);
  quotes_ = std::move(quotes);
  settings_.sources.log.info("listening on 127.0.0.1:" + std::to_string(historyPort()) +
                             " (history) and 127.0.0.1:" + std::to_string(quotesPort()) +
                             " (quotes)");
}

void Server::stop() {
  if (!history_ || !quotes_) {
    return;
  }
  stop_.request_stop();
  history_->requestStop();  // both at once: each gives its last replies some time
  quotes_->requestStop();
  history_.reset();
  quotes_.reset();
}

int Server::historyPort() const { return history_ ? history_->port() : 0; }

int Server::quotesPort() const { return quotes_ ? quotes_->port() : 0; }

bool Server::failed() const {
  return (history_ && history_->failed()) || (quotes_ && quotes_->failed());
}

}  // namespace quintara::quotes
