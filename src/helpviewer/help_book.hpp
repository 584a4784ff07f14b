#pragma once

#include <QDir>
#include <QHelpEngine>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>
#include <memory>

namespace quintara {

/// An opened help file. The help library insists on a writable collection beside its documents, so
/// the book owns a temporary one; the help file itself is only read and may lie on a read-only
/// disk.
class HelpBook {
 public:
  /// The collection lies in `folder`: one that ends with the session does not keep what a viewer
  /// leaves behind that was killed.
  explicit HelpBook(const QString& folder = QDir::tempPath());

  /// Opens `file`. Returns an empty text, or a sentence that tells the reader what is wrong.
  QString open(const QString& file);

  /// Only valid after a successful `open`.
  QHelpEngine& engine() { return *engine_; }
  const QHelpEngine& engine() const { return *engine_; }

  /// The page shown before the reader has chosen one; invalid when the file holds no page.
  QUrl firstPage() const;

 private:
  QTemporaryDir folder_;
  QString name_;
  std::unique_ptr<QHelpEngine> engine_;
};

}  // namespace quintara
