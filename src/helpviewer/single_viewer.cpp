#include "helpviewer/single_viewer.hpp"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QLockFile>

#include "runtime/runtime_folder.hpp"

namespace quintara {

namespace {

constexpr char activationVariable[] = "XDG_ACTIVATION_TOKEN";
constexpr char answerLine[] = "here\n";

}  // namespace

SingleViewer::SingleViewer(const QString& folder, const QString& file,
                           std::chrono::milliseconds patience)
    : patience_(patience) {
  if (!folder.isEmpty()) {
    const QByteArray hash = QCryptographicHash::hash(file.toUtf8(), QCryptographicHash::Sha256);
    const QString name = "help-" + QString::fromLatin1(hash.toHex().left(12));
    static_assert(sizeof("help-0123456789ab.lock") <= kLongestRuntimeName);
    socket_ = QDir(folder).filePath(name);
  }
}

bool SingleViewer::handOver() {
  if (socket_.isEmpty()) {
    return false;
  }
  const QDeadlineTimer deadline(patience_);
  // Two viewers started at once must not both find the socket stale and replace each other's.
  QLockFile lock(socket_ + ".lock");
  if (!lock.tryLock(static_cast<int>(deadline.remainingTime()))) {
    return false;
  }
  if (ringOther(deadline)) {
    return true;
  }
  QLocalServer::removeServer(socket_);
  if (server_.listen(socket_)) {
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { answer(); });
  }
  return false;
}

bool SingleViewer::ringOther(const QDeadlineTimer& deadline) const {
  const auto left = [&deadline] { return static_cast<int>(deadline.remainingTime()); };
  QLocalSocket other;
  other.connectToServer(socket_);
  if (!other.waitForConnected(left())) {
    return false;
  }
  // The desktop gives the token to the program the user started; the open window needs it to be
  // allowed to the front.
  other.write(qgetenv(activationVariable) + '\n');
  other.flush();
  // A viewer that hangs accepts connections too, but does not answer.
  while (!other.canReadLine()) {
    if (!other.waitForReadyRead(left())) {
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
  try {
    return QFile::decodeName(runtimeFolder().c_str());
  } catch (const RuntimeFolderUnusable&) {
    return {};
  }
}

}  // namespace quintara
