#pragma once

#include <QDeadlineTimer>
#include <QLocalServer>
#include <QString>
#include <chrono>
#include <functional>

namespace quintara {

/// Keeps one viewer per user and help file. The first viewer listens on a local socket; a later one
/// rings there instead of opening a window of its own.
class SingleViewer {
 public:
  /// `file` is the help file's canonical path. `folder` holds the socket and is the user's own, or
  /// empty if there is none. `patience` is all the time that handOver() may take.
  SingleViewer(const QString& folder, const QString& file,
               std::chrono::milliseconds patience = std::chrono::seconds(2));

  /// True when another viewer answered and came forward: the caller should end. Otherwise this one
  /// now listens, or works alone where no socket can be made. A socket left by a crash, or by a
  /// viewer that hangs, is replaced.
  bool handOver();

  /// What to do when a later viewer rings.
  void onRing(std::function<void()> action) { ring_ = std::move(action); }

 private:
  bool ringOther(const QDeadlineTimer& deadline) const;
  void answer();

  std::chrono::milliseconds patience_;
  QString socket_;
  QLocalServer server_;
  std::function<void()> ring_;
};

/// The folder for sockets that belongs to the current user alone, empty if there is none.
QString userRuntimeFolder();

}  // namespace quintara
