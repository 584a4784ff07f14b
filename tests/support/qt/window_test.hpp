#pragma once

#include <gtest/gtest.h>

#include <QTimer>
#include <optional>
#include <string>
#include <vector>

#include "platform/qt/dispatcher.hpp"
#include "platform/twips.hpp"
#include "support/qt/offscreen.hpp"
#include "values/errors.hpp"

namespace quintara::test {

struct RecordingMessageBox final : MessageBox {
  void MsgBox(const std::string& prompt, MsgStyle style, const std::string& title) override {
    shown.push_back(title + "/" + std::to_string(static_cast<int>(style)) + "/" + prompt);
  }
  std::vector<std::string> shown;
};

/// A window to put controls into.
struct WindowTest : testing::Test, Offscreen {
  WindowTest() {
    application.reportErrorsBy(messages);
    window = application.platform().toolkit.newWindow(
        {.name = "frmQuintara", .caption = "Form", .scaleWidth = 6000, .scaleHeight = 4500});
  }

  template <class Kind>
  Kind& add(const ControlDesign& design) {
    return dynamic_cast<Kind&>(window->add(design));
  }
  /// A plain control; its place in logical pixels.
  template <class Kind>
  Kind& add(ControlKind kind, const std::string& name, QRect place = {0, 0, 80, 20},
            const std::string& container = "") {
    return add<Kind>({kind, name, container, "", toTwips(place.x()), toTwips(place.y()),
                      toTwips(place.width()), toTwips(place.height())});
  }
  /// The kind of run-time error that an action ends with.
  static std::optional<ErrorKind> failureOf(const std::function<void()>& action) try {
    action();
    return {};
  } catch (const RuntimeError& error) {
    return error.kind();
  }
  void show() {
    window->Show();
    pump();
  }

  RecordingMessageBox messages;
  std::unique_ptr<Window> window;
};

}  // namespace quintara::test
