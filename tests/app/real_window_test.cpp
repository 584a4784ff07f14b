#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>
#include <QPointingDevice>
#include <QTimer>
#include <memory>

#include "app/layout.hpp"
#include "platform/qt/keyboard_pointer.hpp"
#include "support/real_program.hpp"

namespace quintara::test {
namespace {

TEST(RealWindow, PassesPointerMovesToTheControlsThatTakeThem) {
  const RealProgram program;
  sDecimalSep = ",";
  const auto moveTo = [](const char* name, QPoint inside = {10, 10}) {
    Offscreen::moveTo(name, inside);
    Offscreen::pump();
  };
  const auto shown = RealProgram::shown;
  RealProgram::setText("txtTicker", "xyz");
  RealProgram::click("cmdChart");
  moveTo("picChart", {150, 300});
  EXPECT_NE(shown("lblOpen"), "60,25");
  const std::string hovered = shown("lblCurrent");
  for (const char* swallower : {"lblDate", "Label20", "cmdChart", "cboDuration"}) {
    moveTo(swallower, {3, 3});
    EXPECT_EQ(shown("lblCurrent"), hovered) << swallower;
  }
  moveTo("Frame1", {100, 36});
  EXPECT_EQ(shown("lblOpen"), "60,25");
  EXPECT_EQ(shown("lblCurrent"), "");
  QWindow* const window = Offscreen::form().windowHandle();
  QTest::mousePress(window, Qt::LeftButton, {}, Offscreen::inForm("picChart", {250, 300}));
  const std::string low = shown("lblLow");
  EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::BitmapCursor);
  moveTo("txtA1");
  EXPECT_EQ(shown("txtA1"), "") << "the chart holds the pointer";
  QTest::mouseRelease(window, Qt::LeftButton, {}, Offscreen::inForm("txtA1", {10, 10}));
  EXPECT_EQ(shown("txtA1"), low) << "without another movement";
  // A finger, then a pen.
  const QPoint from = Offscreen::inForm("picChart", {250, 300});
  const QPoint to = Offscreen::inForm("txtA2", {10, 10});
  const std::unique_ptr<QPointingDevice> touch(QTest::createTouchDevice());
  QTest::touchEvent(window, touch.get()).press(0, from, window);
  QTest::touchEvent(window, touch.get()).move(0, to, window);
  QTest::touchEvent(window, touch.get()).release(0, to, window);
  EXPECT_EQ(shown("txtA2"), low);
  const QPointingDevice pen("pen", 7, QInputDevice::DeviceType::Stylus,
                            QPointingDevice::PointerType::Pen, QInputDevice::Capability::Position,
                            1, 1);
  const QPoint last = Offscreen::inForm("txtC1", {10, 10});
  for (const auto& [type, at, held] : {std::tuple{QEvent::MouseMove, from, Qt::NoButton},
                                       {QEvent::MouseButtonPress, from, Qt::LeftButton},
                                       {QEvent::MouseButtonRelease, last, Qt::NoButton}}) {
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, window->mapToGlobal(at), button, held, {}, &pen);
    QCoreApplication::sendEvent(window, &event);
  }
  EXPECT_EQ(shown("txtC1"), low);
  sDecimalSep = "";
}

TEST(RealWindow, TakesEachStepPressedDuringADownloadAndOneMoreChart) {
  RealProgram program;
  RealProgram::setText("txtTicker", "xyz");
  program.server.setSilent(true);
  QTimer::singleShot(50, &Offscreen::form(), [&] {
    for (const char* button : {"cmdChart", "cmdExpand"})
      for (int press = 0; press < 2; ++press) Offscreen::click(button);
    program.server.setSilent(false);
  });
  RealProgram::click("cmdChart");
  EXPECT_EQ(program.server.targets.size(), 4U) << "a table and a quote for each";
  const QString summary = Offscreen::widget("picChart").accessibleDescription();
  EXPECT_TRUE(summary.startsWith("xyz: 80 bars shown")) << summary.toStdString();
}

TEST(RealWindow, IsReadAndPickedFromByTheKeyboard) {
  RealProgram program;
  const auto shown = RealProgram::shown;
  const auto press = [](Qt::Key key, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(Offscreen::form().windowHandle(), key, with);
    Offscreen::pump();
  };
  const auto picture = [] { return Offscreen::widget("picChart").grab(QRect(0, 100, 401, 400)); };
  QWidget& chart = Offscreen::widget("picChart");
  RealProgram::setText("txtTicker", "xyz");
  chart.setFocus();
  press(Qt::Key_Left);
  EXPECT_EQ(shown("lblOpen"), "") << "no chart yet";
  RealProgram::click("cmdChart");
  Offscreen::form().activateWindow();  // again: the progress window came between
  Offscreen::pump();
  const QImage bare = picture().toImage();
  const std::pair<Qt::Key, const char*> kKeys[] = {
      {Qt::Key_Down, "60.25"},     {Qt::Key_Left, "50"},     {Qt::Key_Left, "51"},
      {Qt::Key_Right, "50"},       {Qt::Key_PageUp, "80"},   {Qt::Key_PageDown, "50"},
      {Qt::Key_PageDown, "60.25"}, {Qt::Key_Right, "60.25"}, {Qt::Key_End, "169"},
      {Qt::Key_Left, "169"},       {Qt::Key_Home, "60.25"},
  };
  chart.setFocus();
  for (const auto& [key, open] : kKeys) {
    press(key);
    EXPECT_EQ(shown("lblOpen"), open) << key;
    EXPECT_EQ(shown("lblCurrent"), "60.5") << "the newest close";
  }
  EXPECT_NE(picture().toImage(), bare) << "the cross";
  press(Qt::Key_Up);
  const float first = std::stof(shown("lblCurrent"));
  press(Qt::Key_Up);
  const float above = std::stof(shown("lblCurrent"));
  press(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_GT(first, 60.5F);
  EXPECT_NEAR((above - std::stof(shown("lblCurrent"))) / (above - first), 10, 0.2);
  press(Qt::Key_Escape);
  EXPECT_EQ(shown("lblCurrent"), "");
  EXPECT_EQ(picture().toImage(), bare);
  // Picked, carried past other bars, and dropped; then let go.
  for (const auto& [way, dropped] : {std::pair{Qt::Key_Return, "49"}, {Qt::Key_Escape, ""}}) {
    chart.setFocus();
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Left, Qt::Key_Enter, Qt::Key_Left}) press(key);
    Offscreen::widget("txtA1").setFocus();
    RealProgram::setText("txtA1", "");
    press(way);
    press(Qt::Key_Return);
    EXPECT_EQ(shown("txtA1"), dropped);
  }
  chart.setFocus();
  for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Return, Qt::Key_Escape, Qt::Key_End, Qt::Key_Tab})
    press(key);
  EXPECT_EQ(shown("lblOpen"), "60.25") << "left without a pick";
  for (const auto& [box, price] : {std::pair{"txtA1", "50"}, {"txtB1", "60"}})
    RealProgram::setText(box, price);
  RealProgram::click("cmdCalculate");
  RealProgram::click("chkShowA1");
  EXPECT_TRUE(chart.accessibleDescription().endsWith("; A1 retracements 56.18, 55, 53.82"))
      << chart.accessibleDescription().toStdString();
  press(Qt::Key_F1);
  EXPECT_EQ(program.services.log.back(), "help /opt/quintara/Helpfile.hlp 261 []");
}

TEST(RealWindow, TheKeyboardBeginsAgainWhereAnotherChartLeavesItOutOfSight) {
  struct : GlyphSource {
    Glyph none{};
    const Glyph& glyph(char32_t) override { return none; }
    [[nodiscard]] int lineHeight() const override { return 1; }
  } glyphs;
  Raster raster(glyphs, {0}, {0});
  raster.resize(10, 10, 1);
  KeyboardPointer pointer;
  for (const float price : {50.F, 5000.F}) {
    raster.Scale(0, price + 5, 10, price - 5);
    EXPECT_TRUE(pointer.go({.stops = 1}, {{5, price}}, raster));
    EXPECT_EQ(pointer.at()->Y, price);
  }
}

TEST(RealWindow, MovesTheFocusInItsOrder) {
  const RealProgram program;
  RealProgram::click("txtTicker");
  for (const std::string& name : mainWindowTabOrder()) {
    EXPECT_EQ(Offscreen::form().focusWidget()->objectName().toStdString(), name);
    QTest::keyClick(Offscreen::form().windowHandle(), Qt::Key_Tab);
  }
  EXPECT_EQ(Offscreen::form().focusWidget()->objectName(), "txtTicker");
}

}  // namespace
}  // namespace quintara::test
