#include "helpviewer/single_viewer.hpp"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>

namespace quintara {

namespace {

constexpr int kPatience = 2000;  // milliseconds
constexpr char activationVariable[] = "XDG_ACTIVATION_TOKEN";
constexpr char answerLine[] = "here\n";

}  // namespace

SingleViewer::SingleViewer(const QString& folder, const QString& file) {
  const QByteArray hash = QCryptographicHash::hash(file.toUtf8(), QCryptographicHash::Sha256);
  // A socket's path has room for about a hundred characters: a short name, not the file's.
  socket_ = QDir(folder).filePath(QStringLiteral("quintara-help-") +
                                  QString::fromLatin1(hash.toHex().left(16)));
}

bool SingleViewer::handOver() {
  // Two viewers started at once must not both find the socket stale and replace each other's.
  QLockFile lock(socket_ + QStringLiteral(".lock"));
  lock.tryLock(kPatience);
  if (ringOther()) {
    return true;
  }
  QLocalServer::removeServer(socket_);
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  if (server_.listen(socket_)) {
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { answer(); });
  }
  return false;
}

bool SingleViewer::ringOther() const {
  QLocalSocket other;
  other.connectToServer(socket_);
  if (!other.waitForConnected(kPatience)) {
    return false;
  }
  // The desktop gives the token to the program the user started; the open window needs it to be
  // allowed to the front.
  other.write(qgetenv(activationVariable) + '\n');
  other.flush();
  // A viewer that hangs accepts connections too, but does not answer.
  while (!other.canReadLine()) {
    if (!other.waitForReadyRead(kPatience)) {
      return false;
    }
  }
  return other.readLine() == answerLine;
}

void SingleViewer::answer() {
  while (QLocalSocket* caller = server_.nextPendingConnection()) {
    QObject::connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
    const auto read = [this, caller] {
      if (!caller->canReadLine()) {
        return;
      }
      const QByteArray token = caller->readLine().trimmed();
      if (!token.isEmpty()) {
        qputenv(activationVariable, token);
      }
      caller->write(answerLine);
      caller->disconnectFromServer();
      if (ring_) {
        ring_();
      }
    };
    QObject::connect(caller, &QLocalSocket::readyRead, caller, read);
    read();
  }
}

QString userRuntimeFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

}  // namespace quintara
