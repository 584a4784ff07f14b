#include "platform/qt/services.hpp"

#include <QCoreApplication>
#include <QDate>
#include <QLocale>
#include <QProcess>

#include "platform/locale_info.hpp"
#include "platform/qt/units.hpp"
#include "values/errors.hpp"

namespace quintara {

int QtLocaleQuery::GetLocaleInfoA(std::uint32_t /*locale*/, std::int32_t LCType, char* buffer,
                                  int length) {
  const QLocale user = QLocale::system();
  return localeInfo({user.decimalPoint().toStdString(), user.groupSeparator().toStdString()},
                    LCType, buffer, length);
}

std::string QtLocaleQuery::UCase(const std::string& text) const {
  return toQt(text).toUpper().toStdString();
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
