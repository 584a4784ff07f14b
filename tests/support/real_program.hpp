#pragma once

#include <QScopedValueRollback>
#include <QVariant>
#include <memory>
#include <string>
#include <vector>

#include "app/module1.hpp"
#include "platform/qt/http_client.hpp"
#include "support/fakes.hpp"
#include "support/faulty_server.hpp"
#include "support/qt/offscreen.hpp"

namespace quintara::test {

/// The whole program on real windows, fetching from a server that can fail in every way. Messages,
/// date and separators are the test's.
struct RealProgram : private HttpClient, private MessageBox, Offscreen {
  explicit RealProgram(std::chrono::milliseconds patience = std::chrono::seconds(20))
      : http_(application.dispatcher(), {.time = patience}) {
    application.reportErrorsBy(*this);
    const Platform& real = application.platform();
    form_ = Main({real.toolkit, real.screen, *this, *this, services, services, services},
                 {server.host(), server.host()});
    pump();
  }

  static void click(const char* name) {
    Offscreen::click(name);
    pump();
  }
  static void setText(const char* box, const char* text) { widget(box).setProperty("text", text); }
  /// The text of a label or a box.
  static std::string shown(const char* name) {
    return widget(name).property("text").toString().toStdString();
  }
  /// Whether the program waits for the network or an answer, and so for what a person does.
  [[nodiscard]] bool isWaiting() const { return waiting_; }

  FaultyServer server;
  FakePlatform services;
  std::vector<std::string> messages;
  bool asksForReal = false;  ///< message boxes wait for an answer

 private:
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
  bool waiting_ = false;
  std::unique_ptr<frmQuintara> form_;
};

}  // namespace quintara::test
