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
  for (const auto& [width, height] : {std::pair{-15.F, 1500.F}, {1500.F, -15.F}, {NAN, 1500.F}})
    EXPECT_EQ(failureOf([&] { picture.Move(0, 0, width, height); }), ErrorKind::InvalidSize);
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

}  // namespace quintara::test
