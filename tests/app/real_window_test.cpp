#include <gtest/gtest.h>

#include "app/layout.hpp"
#include "support/real_program.hpp"

namespace quintara::test {
namespace {

struct RealWindow : testing::Test, RealProgram {
  void moveTo(const char* name, QPoint inside) {
    Offscreen::moveTo(name, inside);
    pump();
  }
  static int pointer() {
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor == nullptr ? Qt::ArrowCursor : cursor->shape();
  }
  const ScopedSeparator comma{","};
};

TEST_F(RealWindow, FollowsThePointerAndDropsPrices) {
  setText("txtTicker", "xyz");
  click("cmdChart");
  EXPECT_EQ(shown("lblOpen"), "60,25");
  moveTo("picChart", {150, 300});
  EXPECT_NE(shown("lblOpen"), "60,25");
  EXPECT_EQ(pointer(), Qt::CrossCursor);
  const std::string hovered = shown("lblCurrent");
  for (const char* swallower : {"lblDate", "Label20", "cmdChart", "cboDuration"}) {
    moveTo(swallower, {3, 3});
    EXPECT_EQ(shown("lblCurrent"), hovered) << swallower;
  }
  moveTo("Frame1", {100, 36});
  EXPECT_EQ(shown("lblOpen"), "60,25");
  EXPECT_EQ(shown("lblCurrent"), "");
  EXPECT_EQ(pointer(), Qt::ArrowCursor);

  moveTo("picChart", {250, 300});
  const std::string low = shown("lblLow");
  QWindow* const window = form().windowHandle();
  QTest::mousePress(window, Qt::LeftButton, {}, inForm("picChart", {250, 300}));
  EXPECT_EQ(pointer(), Qt::BitmapCursor);
  moveTo("txtA1", {10, 10});
  EXPECT_EQ(shown("txtA1"), "") << "the chart holds the pointer";
  EXPECT_EQ(shown("lblLow"), low);
  QTest::mouseRelease(window, Qt::LeftButton, {}, inForm("txtA1", {10, 10}));
  moveTo("txtA1", {11, 10});
  EXPECT_EQ(shown("txtA1"), low);
  moveTo("txtA2", {10, 10});
  EXPECT_EQ(shown("txtA2"), "");
}

TEST_F(RealWindow, MovesTheFocusInItsOrder) {
  form().activateWindow();
  click("txtTicker");
  for (const std::string& name : mainWindowTabOrder()) {
    EXPECT_EQ(form().focusWidget()->objectName().toStdString(), name);
    QTest::keyClick(form().windowHandle(), Qt::Key_Tab);
  }
  EXPECT_EQ(form().focusWidget()->objectName(), "txtTicker");
}

}  // namespace
}  // namespace quintara::test
