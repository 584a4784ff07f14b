#pragma once

#include <QApplication>
#include <QScopedValueRollback>
#include <QTest>
#include <QWidget>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/module1.hpp"
#include "platform/qt/application.hpp"
#include "platform/qt/http_client.hpp"
#include "support/fakes.hpp"
#include "support/faulty_server.hpp"

namespace quintara::test {

/// The whole program on real windows without a screen, fetching from a server that can fail in
/// every way. Messages, date and separators are the test's.
class RealProgram : Toolkit, HttpClient, MessageBox {
 public:
  explicit RealProgram(TransferLimits limits = {}, QuoteHosts hosts = {})
      : http_(application.dispatcher(), limits) {
    application.reportErrorsBy(*this);
    if (hosts.history.empty()) hosts = {server.host(), server.host()};
    QtApplication& real = application;
    form_ =
        Main({*this, real.platform().screen, *this, *this, services, services, services}, hosts);
    pump();
  }

  template <class Kind>
  [[nodiscard]] Kind& control(const std::string& name) const {
    return window_->control<Kind>(name);
  }
  [[nodiscard]] static QWidget* form(const char* name = "frmQuintara") {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == name) return widget;
    }
    return nullptr;
  }
  [[nodiscard]] static QWidget* widget(const char* name) {
    return form()->findChild<QWidget*>(name);
  }
  static void click(const char* name) {
    const QWidget& control = *widget(name);
    QTest::mouseClick(form()->windowHandle(), Qt::LeftButton, {},
                      control.mapTo(form(), control.rect().center()));
    pump();
  }
  static void pump() {
    for (int round = 0; round < 3; ++round) QCoreApplication::processEvents();
  }
  /// Whether the program waits for the network or an answer, and so for what a person does.
  [[nodiscard]] bool isWaiting() const { return waiting_; }

 private:
  inline static const bool kOffscreen = qputenv("QT_QPA_PLATFORM", "offscreen") &&
                                        // It says with every window that it cannot raise it.
                                        qputenv("QT_LOGGING_RULES", "default.warning=false");
  int argumentCount_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};

 public:
  QtApplication application{argumentCount_, arguments_};
  FaultyServer server;
  FakePlatform services;
  std::vector<std::string> messages;
  bool asksForReal = false;  ///< message boxes wait for an answer

 private:
  std::unique_ptr<Window> newWindow(const WindowDesign& design) override {
    auto window = application.platform().toolkit.newWindow(design);
    if (window_ == nullptr) window_ = window.get();
    return window;
  }
  std::string OpenURL(const std::string& url, int dataType) override {
    const QScopedValueRollback<bool> waiting(waiting_, true);
    return http_.OpenURL(url, dataType);
  }
  void MsgBox(const std::string& prompt, MsgStyle style, const std::string& title) override {
    messages.push_back(std::to_string(static_cast<int>(style)) + " " + title + ": " + prompt);
    const QScopedValueRollback<bool> waiting(waiting_, true);
    if (asksForReal) application.platform().messageBox.MsgBox(prompt, style, title);
  }

  CurlHttpClient http_;
  Window* window_ = nullptr;
  bool waiting_ = false;
  std::unique_ptr<frmQuintara> form_;
};

}  // namespace quintara::test
