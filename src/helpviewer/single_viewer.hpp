#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QString>
#include <functional>

namespace quintara {

/// Keeps one viewer per user and help file. The first viewer listens on a local socket; a later one
/// rings there instead of opening a window of its own.
class SingleViewer {
 public:
  /// `file` is the help file's canonical path. `folder` holds the socket and is the user's own.
  SingleViewer(const QString& folder, const QString& file);

  /// True when another viewer answered and came forward: the caller should end. Otherwise this one
  /// now listens, or works alone where no socket can be made. A socket left by a crash is replaced.
  bool handOver();

  /// What to do when a later viewer rings.
  void onRing(std::function<void()> action) { ring_ = std::move(action); }

 private:
  bool ringOther() const;
  void answer();

  QString socket_;
  QLocalServer server_;
  std::function<void()> ring_;
};

/// The folder for sockets that belongs to the current user alone.
QString userRuntimeFolder();

}  // namespace quintara
