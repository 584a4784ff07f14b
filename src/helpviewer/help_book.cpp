#include "helpviewer/help_book.hpp"

#include <QFileInfo>
#include <QList>

namespace quintara {

HelpBook::HelpBook(const QString& folder) : folder_(folder + "/help-XXXXXX") {}

QString HelpBook::open(const QString& file) {
  const QString shown = QDir::toNativeSeparators(file);
  const QFileInfo info(file);
  if (!info.exists()) {
    return QStringLiteral("The help file %1 was not found.").arg(shown);
  }
  if (!info.isFile() || !info.isReadable()) {
    return QStringLiteral("The help file %1 cannot be read.").arg(shown);
  }
  name_ = QHelpEngineCore::namespaceName(info.absoluteFilePath());
  if (name_.isEmpty()) {
    return QStringLiteral("%1 is not a help file, or it is damaged.").arg(shown);
  }
  if (!folder_.isValid()) {
    return QStringLiteral("No temporary folder could be made: %1.").arg(folder_.errorString());
  }
  engine_ = std::make_unique<QHelpEngine>(folder_.filePath(QStringLiteral("open.qhc")));
  engine_->setReadOnly(false);
  engine_->setUsesFilterEngine(true);
  // The first set-up makes the collection, the second one reads the file that was put into it.
  if (!engine_->setupData() || !engine_->registerDocumentation(info.absoluteFilePath()) ||
      !engine_->setupData()) {
    return QStringLiteral("The help file %1 cannot be opened. %2").arg(shown, engine_->error());
  }
  if (!firstPage().isValid()) {
    return QStringLiteral("The help file %1 holds no page.").arg(shown);
  }
  return {};
}

QUrl HelpBook::firstPage() const {
  const QList<QUrl> pages = engine_->files(name_, QString(), QStringLiteral("html"));
  for (const QUrl& page : pages) {
    if (page.fileName() == QLatin1String("index.html")) {
      return page;
    }
  }
  return pages.isEmpty() ? QUrl() : pages.first();
}

}  // namespace quintara
