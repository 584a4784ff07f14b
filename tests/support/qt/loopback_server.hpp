#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <string>
#include <vector>

namespace quintara::test {

/// Answers every request with the same bytes. Lives on the events that a download lets through.
class LoopbackServer : QTcpServer {
 public:
  explicit LoopbackServer(std::string reply) : reply_(std::move(reply)) {
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this] {
      QTcpSocket* const client = nextPendingConnection();
      connect(client, &QTcpSocket::readyRead, client, [this, client] {
        targets.push_back(client->readAll().split(' ').value(1).toStdString());
        setSilent(silent_);
      });
    });
  }

  /// A server that is silent keeps its clients waiting until it speaks again.
  void setSilent(bool silent) {
    silent_ = silent;
    for (auto* client : findChildren<QTcpSocket*>()) {
      if (silent || !client->isOpen()) continue;
      client->write(reply_.data(), static_cast<qint64>(reply_.size()));
      client->disconnectFromHost();
    }
  }
  [[nodiscard]] std::string url(const std::string& target) const {
    return "http://127.0.0.1:" + std::to_string(serverPort()) + target;
  }

  std::vector<std::string> targets;  ///< as they arrived

 private:
  const std::string reply_;
  bool silent_ = false;
};

}  // namespace quintara::test
