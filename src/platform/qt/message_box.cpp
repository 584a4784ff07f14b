#include "platform/qt/message_box.hpp"

#include <QMessageBox>

#include "platform/qt/dispatcher.hpp"
#include "platform/qt/form.hpp"
#include "platform/qt/units.hpp"

namespace quintara {

namespace {

QMessageBox::Icon iconOf(MsgStyle style) {
  switch (style) {
    case MsgStyle::Plain:
      return QMessageBox::NoIcon;
    case MsgStyle::Stop:
      return QMessageBox::Critical;
    case MsgStyle::Exclamation:
      return QMessageBox::Warning;
    case MsgStyle::Information:
      return QMessageBox::Information;
  }
  return QMessageBox::NoIcon;
}

}  // namespace

void QtMessageBox::MsgBox(const std::string& prompt, MsgStyle style, const std::string& title) {
  if (dispatcher_.isEnding()) {
    return;
  }
  QMessageBox box(iconOf(style), toQt(title), toQt(prompt).remove(u'\r'), QMessageBox::Ok,
                  Form::mainForm());
  box.setObjectName(QStringLiteral("MsgBox"));
  box.setTextFormat(Qt::PlainText);
  const Dispatcher::Busy busy(dispatcher_);
  box.exec();
}

}  // namespace quintara
