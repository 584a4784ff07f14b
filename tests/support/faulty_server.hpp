#pragma once

#include <sys/socket.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/wire.hpp"

namespace quintara::test {

/// What a client gets for its request, byte by byte.
struct Reply {
  enum class End { Close, Reset, Silence };
  std::string bytes;
  End end = End::Close;
  int times = 1;    ///< how often the bytes are sent
  int pauseMs = 1;  ///< before each time
};

inline Reply ok(const std::string& body) {
  return {"HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body};
}

/// The two endpoints of the quote service on a port of its own, served by a thread of its own.
class FaultyServer {
 public:
  /// Serves a table of 200 bars and its quote.
  FaultyServer() : listener_(std::make_unique<QTcpServer>()) {
    QObject::connect(listener_.get(), &QTcpServer::newConnection, listener_.get(),
                     [this] { accept(); });
    listener_->moveToThread(&thread_);
    thread_.start();
    serve(ok(table(200)), ok(quote()));
  }
  ~FaultyServer() {
    there([this] { listener_.reset(); });
    thread_.quit();
    thread_.wait();
  }

  [[nodiscard]] std::string host() const { return "127.0.0.1:" + std::to_string(port_); }
  [[nodiscard]] std::string url(const std::string& target) const {
    return "http://" + host() + target;
  }
  /// The same bytes for every request.
  void serve(const std::string& reply) { serve({reply}, {reply}); }
  /// For a table without bytes nobody listens at all.
  void serve(const Reply& table, const Reply& quote) {
    there([&] {
      table_ = table;
      quote_ = quote;
      if (table.bytes.empty()) return listener_->close();
      if (!listener_->isListening()) listener_->listen(QHostAddress::LocalHost, port_);
      port_ = listener_->serverPort();
    });
  }
  /// A server that is silent keeps its clients waiting until it speaks again.
  void setSilent(bool silent) {
    there([this, silent] { silent_ = silent; });
  }

  std::vector<std::string> targets;  ///< as they arrived

 private:
  /// Runs it where the sockets live, and returns when it is done.
  void there(const std::function<void()>& action) {
    QMetaObject::invokeMethod(listener_.get(), action, Qt::BlockingQueuedConnection);
  }
  void accept() {
    QTcpSocket* const client = listener_->nextPendingConnection();
    QObject::connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
    // The request is small enough to come in one piece, and nothing follows it.
    QObject::connect(client, &QTcpSocket::readyRead, client, [this, client] {
      targets.push_back(client->readAll().split(' ').value(1).toStdString());
      send(*client, targets.back().starts_with("/d/") ? quote_ : table_);
    });
  }
  void send(QTcpSocket& client, const Reply& reply) {
    auto* timer = new QTimer(&client);
    timer->callOnTimeout(&client, [this, &client, timer, reply, left = reply.times]() mutable {
      if (silent_ || client.bytesToWrite() > 0) return;
      if (left-- > 0) {
        client.write(reply.bytes.data(), static_cast<qint64>(reply.bytes.size()));
        return;
      }
      timer->stop();
      const linger atOnce{1, 0};  // closing is a reset then
      if (reply.end == Reply::End::Reset)
        setsockopt(static_cast<int>(client.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce,
                   sizeof atOnce);
      if (reply.end != Reply::End::Silence) client.abort();
    });
    timer->start(reply.pauseMs);
  }

  Reply table_, quote_;
  bool silent_ = false;
  quint16 port_ = 0;
  QThread thread_;
  std::unique_ptr<QTcpServer> listener_;
};

}  // namespace quintara::test
