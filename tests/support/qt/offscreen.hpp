#pragma once

#include <QApplication>
#include <QTest>
#include <stdexcept>

#include "platform/qt/application.hpp"

namespace quintara::test {

/// Real windows without a screen. Input comes in where the windowing system would bring it.
struct Offscreen {
  static QWidget& form(const QString& name = "frmQuintara") {
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
  static void pump() {
    for (int round = 0; round < 3; ++round) QCoreApplication::processEvents();
  }

  inline static const bool kOffscreen = qputenv("QT_QPA_PLATFORM", "offscreen") &&
                                        // It says with every window that it cannot raise it.
                                        qputenv("QT_LOGGING_RULES", "default.warning=false");
  char program[5] = "test";
  char* arguments[2] = {program, nullptr};
  int argumentCount = 1;
  QtApplication application{argumentCount, arguments};
};

}  // namespace quintara::test
