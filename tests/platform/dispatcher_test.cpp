#include "platform/qt/dispatcher.hpp"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointingDevice>
#include <sstream>

#include "support/faulty_server.hpp"
#include "support/qt/window_test.hpp"

namespace quintara::test {

/// A window whose button "cmd" fetches from a server that keeps it waiting.
struct BusyTest : WindowTest {
  BusyTest() {
    add<Button>(
        {.kind = ControlKind::Button, .name = "cmd", .width = 900, .height = 375, .pilesUp = true})
        .Click = [this] { fetch(); };
    auto& picture = add<PictureBox>(ControlKind::PictureBox, "pic", {0, 80, 60, 60});
    picture.MouseDown = [this](const MouseEvent&) { log << "down "; };
    picture.MouseUp = [this](const MouseEvent&) { log << "up "; };
    add<Button>(ControlKind::Button, "other", {80, 0, 60, 25}).Click = [this] { log << "other "; };
    add<TextBox>(ControlKind::TextBox, "txt", {0, 40, 60, 20});
    window->MouseMove = [this](const MouseEvent& event) {
      log << "move" << event.X / kTwipsPerPixel << ' ';
    };
    window->Resize = [this] { log << "resize" << window->ScaleWidth() / kTwipsPerPixel << ' '; };
    server.serve("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody");
    server.setSilent(true);
    show();
  }
  void fetch() {
    log << "[";
    QTimer::singleShot(20, &form(), std::exchange(meanwhile, [] {}));
    const auto get = [this] { log << application.platform().http.OpenURL(server.url("/"), 0); };
    if (failureOf(get) == ErrorKind::TransferFailed) {
      application.platform().messageBox.MsgBox("never seen", MsgStyle::Stop, "t");
      log << "failed";
    }
    log << "] ";
  }
  FaultyServer server;
  std::function<void()> meanwhile;
  std::ostringstream log;
};

TEST_F(BusyTest, WhatHappensDuringADownloadIsDeliveredAfterwardsInOrder) {
  meanwhile = [this] {
    for (const char* name : {"cmd", "cmd", "txt"}) click(name);
    for (int press = 0; press < 2; ++press) widget<QAbstractButton>("other").click();
    for (const char key : {'a', 'b'}) QTest::keyClick(form().windowHandle(), key);
    for (int press = 0; press < 2; ++press) click("other");
    for (const int x : {200, 210, 220}) QTest::mouseMove(form().windowHandle(), {x, 200});
    for (const int width : {410, 420}) form().resize(width, 310);
    pump();
    EXPECT_EQ(widget<QLineEdit>("txt").text(), "");
    server.setSilent(false);
  };
  click("cmd");
  pump();
  EXPECT_EQ(log.str(), "[body] other other resize420 [body] other other move220 ");
  EXPECT_EQ(widget<QLineEdit>("txt").text(), "ab");
}

TEST_F(BusyTest, WhatIsPressedDuringAHandlerIsPressedAsOftenAndIsLetGoOf) {
  QWindow* const main = form().windowHandle();
  const QPoint at = inForm("pic", {5, 5});
  const auto boxIsAnswered = [&] {
    QTimer::singleShot(50, &form(), [&] {
      QTest::mouseRelease(main, Qt::LeftButton, {}, at);
      QTest::keyClick(QApplication::activeModalWidget()->windowHandle(), Qt::Key_Return);
    });
    application.platform().messageBox.MsgBox("failed", MsgStyle::Stop, "t");
  };
  const std::pair<std::function<void()>, const char*> kCases[] = {
      {[&] {
         QTest::mousePress(main, Qt::LeftButton, {}, at);
         for (int key = 0; key < 1000; ++key) QTest::keyClick(main, Qt::Key_Shift);
         QTest::mouseClick(main, Qt::RightButton, {}, at);
         QTest::mouseRelease(main, Qt::LeftButton, {}, at);
       },
       "down up "},
      {[&] { QTest::mouseDClick(main, Qt::LeftButton, {}, at); }, "down up down up "},
      {[&] {
         QTest::mousePress(main, Qt::LeftButton, {}, at);
         boxIsAnswered();
       },
       "down up "},
      {[&] {
         auto pen = std::make_unique<QPointingDevice>("pen", 7, QInputDevice::DeviceType::Stylus,
                                                      QPointingDevice::PointerType::Pen,
                                                      QInputDevice::Capability::Position, 1, 1);
         for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
           QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, {}, pen.get());
           QCoreApplication::sendEvent(main, &event);
         }
       },
       "down up "},
  };
  for (const auto& [action, raised] : kCases) {
    log.str("");
    server.setSilent(true);
    meanwhile = [&, &act = action] {
      act();
      server.setSilent(false);
    };
    click("cmd");
    pump();
    EXPECT_EQ(log.str(), "[body] " + std::string(raised));
  }
}

TEST_F(BusyTest, AFingerAPenAndTheWheelDoWhatTheMouseDoesAtOnceOrAfterTheDownload) {
  auto& box = add<ComboBox>(ControlKind::ComboBox, "cbo", {80, 40, 60, 20});
  for (const char* item : {"Daily", "Weekly", "Monthly"}) box.AddItem(item);
  box.Click = [&] { log << "turned" << box.ListIndex() << ' '; };
  widget("cbo").show();
  QWindow* const main = form().windowHandle();
  const QPointF on = inForm("pic", {5, 5});
  const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
  const QPointingDevice pen("pen", 7, QInputDevice::DeviceType::Stylus,
                            QPointingDevice::PointerType::Pen, QInputDevice::Capability::Position,
                            1, 1);
  const std::pair<std::function<void()>, const char*> kCases[] = {
      {[&] {
         QTest::touchEvent(main, screen.get()).press(0, on.toPoint(), main);
         QTest::touchEvent(main, screen.get()).release(0, on.toPoint(), main);
       },
       "down up "},
      {[&] {
         // The toolkit makes a mouse's event of a pen's that nobody takes.
         for (const auto& [own, mouse, held] :
              {std::tuple{QEvent::TabletPress, QEvent::MouseButtonPress, Qt::LeftButton},
               {QEvent::TabletRelease, QEvent::MouseButtonRelease, Qt::NoButton}}) {
           QTabletEvent first(own, &pen, on, on, 1, 0, 0, 0, 0, 0, {}, Qt::LeftButton, held);
           QCoreApplication::sendEvent(main, &first);
           EXPECT_FALSE(first.isAccepted());
           QMouseEvent then(mouse, on, on, Qt::LeftButton, held, {}, &pen);
           QCoreApplication::sendEvent(main, &then);
         }
       },
       "down up "},
      {[&] {
         const QPointF at = inForm("cbo", {5, 5});
         QWheelEvent wheel(at, at, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
         for (int notch = 0; notch < 2; ++notch) QCoreApplication::sendEvent(main, &wheel);
       },
       "turned1 turned2 "},
  };
  for (const auto& [action, raised] : kCases) {
    for (const bool during : {true, false}) {
      box.setListIndex(0);
      widget("cbo").setFocus();
      log.str("");
      server.setSilent(true);
      meanwhile = [&, &act = action] {
        if (during) act();
        pump();
        EXPECT_EQ(log.str(), "[");
        server.setSilent(false);
      };
      widget<QAbstractButton>("cmd").click();
      pump();
      if (!during) action();
      pump();
      EXPECT_EQ(log.str(), "[body] " + std::string(raised));
    }
  }
}

TEST_F(BusyTest, OnlyTheMainWindowCanBeClosedDuringADownloadAndEndsTheProgramAtOnce) {
  const auto progress = application.platform().toolkit.newWindow(
      {.name = "progress", .scaleWidth = 3000, .scaleHeight = 900, .fixedDialog = true});
  progress->Show();
  meanwhile = [this] {
    EXPECT_FALSE(form("progress").close());
    EXPECT_EQ(form("progress").minimumSize(), form("progress").maximumSize());
    click("other");
    form().close();
    QTimer::singleShot(2000, &form(), [this] { server.setSilent(false); });
  };
  QTimer::singleShot(0, &form(), [] { click("cmd"); });
  EXPECT_EQ(application.run(), 0);
  EXPECT_EQ(log.str(), "[failed] ");
}

TEST_F(BusyTest, AMessageBoxHearsTheUserAndNothingElseDoes) {
  window->control<Button>("cmd").Click = [this] {
    QTimer::singleShot(50, &form(), [] {
      // Sent to the widget, past the toolkit's own barrier.
      QTest::mouseClick(&widget("other"), Qt::LeftButton);
      auto& box = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
      EXPECT_EQ(box.text(), "a <b>\nc");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
      QTest::keyClick(box.windowHandle(), Qt::Key_Return);
    });
    application.platform().messageBox.MsgBox("a <b>\r\nc", MsgStyle::Exclamation, "t");
    log << "answered ";
  };
  click("cmd");
  pump();
  EXPECT_EQ(log.str(), "answered other ");
}

TEST_F(WindowTest, AnErrorThatNoHandlerCaughtIsShownAndOnlyAPressOnTheChartEndsTheProgram) {
  auto& picture = add<PictureBox>(ControlKind::PictureBox, "pic", {0, 0, 60, 60});
  auto& button = add<Button>(ControlKind::Button, "cmd", {80, 0, 60, 25});
  show();
  for (const std::function<void()>& handler : std::initializer_list<std::function<void()>>{
           [this] { application.platform().help.WinHelpA("/nowhere", 261, ""); },
           [] { throw std::out_of_range("txtA9"); }, [] { throw 7; }}) {
    button.Click = handler;
    click("cmd");
  }
  EXPECT_FALSE(application.dispatcher().isEnding());
  picture.MouseDown = [](const MouseEvent&) { throw RuntimeError(ErrorKind::TypeMismatch); };
  QTimer::singleShot(0, &form(), [] { click("pic"); });
  EXPECT_EQ(application.run(), 1);
  EXPECT_THAT(messages.shown,
              testing::ElementsAre(testing::HasSubstr("/quintara-help "),
                                   "Quintara/16/The command failed unexpectedly: txtA9",
                                   "Quintara/16/The command failed unexpectedly.",
                                   "Quintara/16/" + std::string(textOf(ErrorKind::TypeMismatch))));
}

}  // namespace quintara::test
