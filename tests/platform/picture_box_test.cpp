#include <QCursor>
#include <cmath>

#include "support/qt/window_test.hpp"

namespace quintara::test {

struct PictureBoxTest : WindowTest {
  PictureBox& picture = add<PictureBox>(ControlKind::PictureBox, "pic", {0, 0, 100, 100});
};

TEST_F(PictureBoxTest, MoveRaisesResizeAtOnceWhenTheSizeChangedAndRefusesNegativeSizes) {
  std::vector<float> widths;
  picture.Resize = [&] { widths.push_back(picture.ScaleWidth()); };
  picture.setScaleModePixels();
  picture.Move(300, 150, 3000, 1500);
  picture.Move(600, 150, 3000, 1500);
  EXPECT_EQ(failureOf([&] { picture.Move(0, 0, -15, 1500); }), ErrorKind::InvalidSize);
  EXPECT_EQ(failureOf([&] { picture.Move(0, 0, 1500, -15); }), ErrorKind::InvalidSize);
  EXPECT_EQ(failureOf([&] { picture.Move(0, 0, NAN, 1500); }), ErrorKind::InvalidSize);
  EXPECT_EQ(widths, std::vector<float>{200});
  EXPECT_EQ(picture.Left(), 600);
  picture.Resize = [] { throw RuntimeError(ErrorKind::Overflow); };
  EXPECT_EQ(failureOf([&] { picture.Move(0, 0, 150, 150); }), ErrorKind::Overflow);
}

TEST_F(PictureBoxTest, WhatIsDrawnAppearsOnScreenAndIsReadBackUnderThePointer) {
  picture.Scale(100, 200, 0, 0);
  picture.Line(80, 150, 60, 100, {0x000000FF}, BoxMode::Filled);
  const QImage shown = widget("pic").grab().toImage().scaled(100, 100);
  EXPECT_EQ(shown.pixelColor(30, 35), QColor(Qt::red));
  EXPECT_EQ(shown.pixelColor(15, 35), QColor(Qt::black));
  std::string buttons;
  const auto record = [&](const MouseEvent& at) {
    EXPECT_EQ(std::pair(std::lround(at.X), std::lround(at.Y)), std::pair(70L, 128L));
    EXPECT_EQ(picture.Point(at.X, at.Y), 0x000000FF);
    buttons += std::to_string(at.Button);
  };
  picture.MouseMove = picture.MouseDown = picture.MouseUp = record;
  show();
  moveTo("pic", {30, 36});
  for (const auto button : {Qt::LeftButton, Qt::RightButton})
    QTest::mousePress(form().windowHandle(), button, {}, {30, 36});
  for (const auto button : {Qt::LeftButton, Qt::RightButton})
    QTest::mouseRelease(form().windowHandle(), button, {}, {30, 36});
  QTest::mouseDClick(form().windowHandle(), Qt::LeftButton, {}, {30, 36});
  EXPECT_EQ(buttons, "013121111");
}

TEST_F(PictureBoxTest, ThePointerIsOneValueForAllWindows) {
  add<TextBox>(ControlKind::TextBox, "txt", {80, 160, 60, 20}).MouseMove = [](const auto&) {};
  show();
  EXPECT_EQ(widget("txt").cursor().shape(), Qt::IBeamCursor);
  moveTo("txt", {5, 5});
  EXPECT_EQ(widget("txt").cursor().shape(), Qt::ArrowCursor);
  Screen& screen = application.platform().screen;
  for (const auto pointer : std::vector<std::int16_t>{2, 99, 2, 99})
    screen.setMousePointer(pointer);
  screen.setMouseIcon("dragdrop2");
  ASSERT_NE(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QApplication::overrideCursor()->hotSpot(), QPoint(12, 9));
  EXPECT_FALSE(QApplication::overrideCursor()->pixmap().isNull());
  screen.setMousePointer(0);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

}  // namespace quintara::test
