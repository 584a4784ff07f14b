#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QMessageBox>
#include <cstdio>
#include <cstring>

#include "helpviewer/help_book.hpp"
#include "helpviewer/single_viewer.hpp"
#include "helpviewer/viewer_window.hpp"

namespace {

constexpr char kUsage[] = "Usage: quintara-help FILE\nShows the help file FILE at its index.\n";

void report(const QString& sentence) {
  QMessageBox box(QMessageBox::Critical, QStringLiteral("Quintara Help"), sentence);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

int showHelp(const QString& file) {
  const QString runtime = quintara::userRuntimeFolder();
  quintara::HelpBook book(runtime.isEmpty() ? QDir::tempPath() : runtime);
  const QString wrong = book.open(file);
  if (!wrong.isEmpty()) {
    report(wrong);
    return 1;
  }
  quintara::SingleViewer single(runtime, QFileInfo(file).canonicalFilePath());
  if (single.handOver()) {
    return 0;
  }
  quintara::ViewerWindow window(book);
  single.onRing([&window] { window.comeForward(); });
  window.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  // Answered before the display is opened, so that it works without one.
  if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
    std::fputs(kUsage, stdout);
    return 0;
  }
  const QApplication app(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 2) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  QApplication::setDesktopFileName(QStringLiteral("org.quintara.Quintara"));
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/art/quintara-32.png")));
  return showHelp(arguments[1]);
}
