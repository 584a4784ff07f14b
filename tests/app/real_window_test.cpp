#include <gtest/gtest.h>

#include "app/layout.hpp"
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
  moveTo("txtA1");
  EXPECT_EQ(shown("txtA1"), "") << "the chart holds the pointer";
  QTest::mouseRelease(window, Qt::LeftButton, {}, Offscreen::inForm("txtA1", {10, 10}));
  moveTo("txtA1", {11, 10});
  EXPECT_EQ(shown("txtA1"), low);
  sDecimalSep = "";
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
