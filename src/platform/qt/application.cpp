#include "platform/qt/application.hpp"

#include <QApplication>
#include <QIcon>
#include <cstdio>
#include <exception>

#include "platform/qt/accessibility.hpp"
#include "platform/qt/dispatcher.hpp"
#include "platform/qt/http_client.hpp"
#include "platform/qt/message_box.hpp"
#include "platform/qt/screen.hpp"
#include "platform/qt/services.hpp"
#include "platform/qt/style.hpp"
#include "platform/qt/toolkit.hpp"

/// Outside of any namespace, as the macro demands. A static library's pictures are not found
/// without it.
static void registerArt() { Q_INIT_RESOURCE(art); }

namespace quintara {

namespace {

/// What has to be settled before the application object exists.
struct Preparation {
  Preparation() {
    registerArt();
    QCoreApplication::setApplicationName(QStringLiteral("Quintara"));
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // Set early, the desktop's own style is not even loaded.
    QApplication::setStyle(newStyle());
  }
};

}  // namespace

struct QtApplication::Parts {
  Parts(int& argc, char** argv)
      : application(argc, argv),
        dispatcher([](const std::string&) {}),
        toolkit(dispatcher),
        messageBox(dispatcher),
        http(dispatcher),
        platform{toolkit, screen, messageBox, http, locale, clock, help} {
    QGuiApplication::setDesktopFileName(QStringLiteral("org.quintara.Quintara"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QIcon icon;
    icon.addFile(QStringLiteral(":/art/quintara-16.png"));
    icon.addFile(QStringLiteral(":/art/quintara-32.png"));
    QGuiApplication::setWindowIcon(icon);
    installAccessibility();
  }

  Preparation preparation;
  QApplication application;
  Dispatcher dispatcher;
  QtToolkit toolkit;
  QtScreen screen;
  QtMessageBox messageBox;
  CurlHttpClient http;
  QtLocaleQuery locale;
  LocalClock clock;
  QtHelpLauncher help;
  Platform platform;
};

QtApplication::QtApplication(int& argc, char** argv) : parts_(std::make_unique<Parts>(argc, argv)) {
  reportErrorsBy(parts_->messageBox);
}

QtApplication::~QtApplication() = default;

Platform& QtApplication::platform() { return parts_->platform; }

Dispatcher& QtApplication::dispatcher() { return parts_->dispatcher; }

void QtApplication::reportErrorsBy(MessageBox& messageBox) {
  parts_->dispatcher.setReport([&messageBox](const std::string& text) {
    messageBox.MsgBox(text, MsgStyle::Stop, "Quintara");
  });
}

int QtApplication::run() {
  try {
    // The program may have come to its end before its events are waited for.
    if (!parts_->dispatcher.isEnding()) {
      QApplication::exec();
    }
    return parts_->dispatcher.exitCode();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "Quintara: %s\n", error.what());
  } catch (...) {
    std::fputs("Quintara: unexpected failure\n", stderr);
  }
  return 1;
}

}  // namespace quintara
