#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <optional>
#include <string>
#include <vector>

#include "platform/qt/application.hpp"
#include "platform/qt/dispatcher.hpp"
#include "values/errors.hpp"

namespace quintara::test {

struct RecordingMessageBox final : MessageBox {
  void MsgBox(const std::string& prompt, MsgStyle style, const std::string& title) override {
    shown.push_back(title + "/" + std::to_string(static_cast<int>(style)) + "/" + prompt);
  }
  std::vector<std::string> shown;
};

/// A real window without a screen. Input comes in where the windowing system would bring it.
struct WindowTest : testing::Test {
  WindowTest() {
    application.reportErrorsBy(messages);
    window = application.platform().toolkit.newWindow(
        {.name = "form", .caption = "Form", .scaleWidth = 6000, .scaleHeight = 4500});
  }

  template <class Kind>
  Kind& add(const ControlDesign& design) {
    return dynamic_cast<Kind&>(window->add(design));
  }
  /// A plain control; its place in logical pixels.
  template <class Kind>
  Kind& add(ControlKind kind, const std::string& name, QRect place = {0, 0, 80, 20},
            const std::string& container = "") {
    const auto twips = [](int pixels) { return static_cast<float>(pixels * 15); };
    return add<Kind>({kind, name, container, "", twips(place.x()), twips(place.y()),
                      twips(place.width()), twips(place.height())});
  }
  static QWidget& form(const QString& name = "form") {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (widget->objectName() == name) return *widget;
    throw std::out_of_range(name.toStdString());
  }
  template <class Widget = QWidget>
  static Widget& widget(const QString& name) {
    return dynamic_cast<Widget&>(*form().findChild<QWidget*>(name));
  }
  static QPoint inForm(const QString& name, QPoint at) { return widget(name).mapTo(&form(), at); }
  static void click(const QString& name, QPoint at = {5, 5}) {
    QTest::mouseClick(form().windowHandle(), Qt::LeftButton, {}, inForm(name, at));
  }
  static void moveTo(const QString& name, QPoint at) {
    QTest::mouseMove(form().windowHandle(), inForm(name, at));
  }
  /// The kind of run-time error that an action ends with.
  static std::optional<ErrorKind> failureOf(const std::function<void()>& action) try {
    action();
    return {};
  } catch (const RuntimeError& error) {
    return error.kind();
  }
  static void pump() {
    for (int round = 0; round < 3; ++round) QCoreApplication::processEvents();
  }
  void show() {
    window->Show();
    pump();
  }

  inline static const bool kOffscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
  char program[5] = "test";
  char* arguments[2] = {program, nullptr};
  int argumentCount = 1;
  QtApplication application{argumentCount, arguments};
  RecordingMessageBox messages;
  std::unique_ptr<Window> window;
};

}  // namespace quintara::test
