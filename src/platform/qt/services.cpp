#include "platform/qt/services.hpp"

#include <QCoreApplication>
#include <QDate>
#include <QLocale>
#include <QProcess>

#include "platform/qt/units.hpp"
#include "values/errors.hpp"

namespace quintara {

int QtLocaleQuery::GetLocaleInfoA(std::uint32_t /*locale*/, std::int32_t LCType, char* buffer,
                                  int length) {
  constexpr std::int32_t kDecimal = 14;
  constexpr std::int32_t kThousand = 15;
  if (LCType != kDecimal && LCType != kThousand) {
    return 0;
  }
  const QLocale user = QLocale::system();
  const QByteArray separator =
      (LCType == kDecimal ? user.decimalPoint() : user.groupSeparator()).toUtf8();
  // Numbers are read byte by byte, so a separator such as the Arabic one is as good as none.
  if (separator.size() != 1 || length < 2) {
    return 0;
  }
  buffer[0] = separator.front();
  buffer[1] = '\0';
  return 2;
}

Date LocalClock::today() const {
  const QDate date = QDate::currentDate();
  return std::chrono::year(date.year()) / date.month() / date.day();
}

std::string QtHelpLauncher::applicationFolder() const {
  return QCoreApplication::applicationDirPath().toStdString();
}

void QtHelpLauncher::WinHelpA(const std::string& helpFile, std::uint32_t /*command*/,
                              const std::string& /*key*/) {
  QProcess viewer;
  viewer.setProgram(QCoreApplication::applicationDirPath() + QStringLiteral("/quintara-help"));
  viewer.setArguments({toQt(helpFile)});
  if (viewer.startDetached()) {
    return;
  }
  const QString text = QStringLiteral("The help viewer %1 could not be started: %2")
                           .arg(viewer.program(), viewer.errorString());
  throw RuntimeError(ErrorKind::LaunchFailed, text.toStdString());
}

}  // namespace quintara
