#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>

#include "app/layout.hpp"
#include "service/server.hpp"
#include "support/real_program.hpp"

namespace quintara::test {
namespace {

/// The real window without a screen, and the real quote service on a Friday.
struct RealWindow : testing::TestWithParam<const char*> {
  RealWindow() {
    program.services.date = std::chrono::year{2026} / 11 / 20;
    sDecimalSep = GetParam();
    program.form()->activateWindow();
    program.pump();
  }
  ~RealWindow() override { sDecimalSep = ""; }
  static QuoteHosts start(quotes::Server& server) {
    server.start();
    const auto host = [](int port) { return "127.0.0.1:" + std::to_string(port); };
    return {host(server.historyPort()), host(server.quotesPort())};
  }
  void type(const char* box, const char* text) {
    program.click(box);
    QTest::keyClicks(program.widget(box), text);
  }
  void drawChart() {
    type("txtTicker", "demo");
    program.click("cmdChart");
  }
  std::string shown(const char* name) {
    if (auto* box = dynamic_cast<QLineEdit*>(program.widget(name)))
      return box->text().toStdString();
    return dynamic_cast<QLabel&>(*program.widget(name)).text().toStdString();
  }
  int pixels(QRgb colour) {
    const QImage image = program.widget("picChart")->grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) == colour ? 1 : 0;
    }
    return count;
  }
  QPoint at(const char* name, QPoint inside) {
    return program.widget(name)->mapTo(program.form(), inside);
  }
  void moveTo(const char* name, QPoint inside) {
    QTest::mouseMove(program.form()->windowHandle(), at(name, inside));
    program.pump();
  }
  static int pointer() {
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor == nullptr ? Qt::ArrowCursor : cursor->shape();
  }

  quotes::Server server{{0,
                         0,
                         {},
                         [] { return *quotes::makeDay(2026, 11, 20); },
                         quotes::Log(quotes::LogLevel::Error)}};
  RealProgram program{{}, start(server)};
};
INSTANTIATE_TEST_SUITE_P(PointAndComma, RealWindow, testing::Values(".", ","));

TEST_P(RealWindow, DrawsCalculatesAndShowsLevels) {
  drawChart();
  EXPECT_EQ(shown("lblDate"), "20-Nov-26");
  EXPECT_EQ(shown("txtClose"), shown("lblClose"));
  EXPECT_NE(shown("lblHigh").find(GetParam()), std::string::npos) << shown("lblHigh");
  EXPECT_GT(pixels(0xFF00FF00), 1500);
  type("txtA1", "80.5");
  type("txtB1", "90.5");
  program.click("cmdCalculate");
  EXPECT_EQ(shown("lblA1R1"), std::string("86") + GetParam() + "68");
  program.click("chkShowA1");
  EXPECT_GT(pixels(0xFFFF0000), 900) << "three lines";
  program.click("cmdClear");
  EXPECT_EQ(pixels(0xFFFF0000), 0);
  EXPECT_TRUE(program.messages.empty());
}

TEST_P(RealWindow, FollowsThePointerAndDropsPrices) {
  drawChart();
  const std::string newest = shown("lblOpen");
  moveTo("picChart", {150, 300});
  EXPECT_NE(shown("lblOpen"), newest);
  EXPECT_EQ(pointer(), Qt::CrossCursor);
  const std::string hovered = shown("lblCurrent");
  for (const char* swallower : {"lblDate", "Label20", "cmdChart", "cboDuration"}) {
    moveTo(swallower, {3, 3});
    EXPECT_EQ(shown("lblCurrent"), hovered) << swallower;
  }
  moveTo("Frame1", {100, 36});
  EXPECT_EQ(shown("lblOpen"), newest);
  EXPECT_EQ(shown("lblCurrent"), "");
  EXPECT_EQ(pointer(), Qt::ArrowCursor);

  moveTo("picChart", {250, 300});
  const std::string low = shown("lblLow");
  QWindow* const window = program.form()->windowHandle();
  QTest::mousePress(window, Qt::LeftButton, {}, at("picChart", {250, 300}));
  EXPECT_EQ(pointer(), Qt::BitmapCursor);
  moveTo("txtA1", {10, 10});
  EXPECT_EQ(shown("txtA1"), "") << "the chart holds the pointer";
  EXPECT_EQ(shown("lblLow"), low);
  QTest::mouseRelease(window, Qt::LeftButton, {}, at("txtA1", {10, 10}));
  moveTo("txtA1", {11, 10});
  EXPECT_EQ(shown("txtA1"), low);
  moveTo("txtA2", {10, 10});
  EXPECT_EQ(shown("txtA2"), "");
}

TEST_P(RealWindow, MovesTheFocusInItsOrder) {
  program.click("txtTicker");
  for (const std::string& name : mainWindowTabOrder()) {
    EXPECT_EQ(program.form()->focusWidget()->objectName().toStdString(), name);
    QTest::keyClick(program.form()->windowHandle(), Qt::Key_Tab);
  }
  EXPECT_EQ(program.form()->focusWidget()->objectName(), "txtTicker");
}

}  // namespace
}  // namespace quintara::test
