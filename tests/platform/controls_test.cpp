#include "platform/controls.hpp"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QWheelEvent>
#include <cmath>

#include "support/qt/window_test.hpp"

namespace quintara::test {

TEST_F(WindowTest, AComboBoxRaisesClickForEveryAssignmentAndEveryPickOfTheUser) {
  auto& box = add<ComboBox>(ControlKind::ComboBox, "cbo");
  auto& shown = widget<QComboBox>("cbo");
  std::vector<int> clicks;
  box.Click = [&] { clicks.push_back(box.ListIndex()); };
  for (const char* item : {"Daily", "Weekly", "Monthly"}) box.AddItem(item);
  EXPECT_EQ(shown.currentIndex(), -1);
  box.setListIndex(0);
  box.setListIndex(0);
  EXPECT_EQ(failureOf([&] { box.setListIndex(3); }), ErrorKind::SubscriptOutOfRange);
  show();
  shown.clearFocus();
  QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&shown, &wheel);
  shown.setFocus();
  for (const auto key : {Qt::Key_Down, Qt::Key_M}) QTest::keyClick(form().windowHandle(), key);
  Q_EMIT shown.activated(2);
  EXPECT_EQ(clicks, std::vector<int>({0, 0, 1, 2, 2}));
  box.Click = [] { throw RuntimeError(ErrorKind::Overflow); };
  EXPECT_EQ(failureOf([&] { box.setListIndex(0); }), ErrorKind::Overflow);
  EXPECT_EQ(box.ListIndex(), 0);
}

TEST_F(WindowTest, ACheckBoxRaisesClickWhenItsValueChangesWhoeverChangesIt) {
  for (const ControlKind kind : {ControlKind::CheckBox, ControlKind::PushCheckBox}) {
    const char* name = kind == ControlKind::CheckBox ? "chk" : "push";
    auto& box = add<CheckBox>(kind, name, {0, 0, 20, 20});
    std::vector<int> clicks;
    box.Click = [&] { clicks.push_back(box.Value()); };
    for (const int value : {1, 1, 2, 1, 2}) box.setValue(static_cast<std::int16_t>(value));
    show();
    auto& shown = widget<QAbstractButton>(name);
    EXPECT_TRUE(shown.isChecked());
    for (int i = 0; i < 2; ++i) QTest::mouseClick(&shown, Qt::LeftButton);
    QAccessible::queryAccessibleInterface(&shown)->actionInterface()->doAction("Toggle");
    pump();
    EXPECT_EQ(clicks, std::vector<int>({1, 2, 1, 2, 0, 1, 0})) << "the last by a screen reader";
  }
}

TEST_F(WindowTest, ATextBoxLimitsTypingButNotTheProgram) {
  auto& box = add<TextBox>({.kind = ControlKind::TextBox, .name = "txt", .maxLength = 5});
  auto& shown = widget<QLineEdit>("txt");
  show();
  QTest::keyClicks(&shown, "1234567");
  EXPECT_EQ(box.Text(), "12345");
  box.setText("12.345678");
  EXPECT_EQ(box.Text(), "12.345678");
  QTest::keySequence(&shown, {Qt::Key_End, Qt::Key_9, Qt::Key_Backspace, Qt::Key_9});
  EXPECT_EQ(box.Text(), "12.34567");
}

TEST_F(WindowTest, TheReadoutStaysReadableOnBlackInEveryTheme) {
  auto& label = add<Label>({.name = "lblDate", .look = {.transparent = true, .readout = true}});
  show();
  QPalette theme;
  for (const auto& [themed, readable] : {std::pair{0xFFE0C0U, 0xC0E0FFU}, {0U, 0xFFFFFFU}}) {
    theme.setColor(QPalette::HighlightedText, QColor::fromRgb(themed));
    QApplication::setPalette(theme);
    pump();
    EXPECT_EQ(label.ForeColor().bgr, readable);
  }
}

TEST_F(WindowTest, ALabelGrowsForItsFixedTextOnly) {
  add<Label>({.name = "fixed", .caption = "A text that is wider than this", .width = 150});
  add<Label>({.name = "lblDate", .width = 150}).setCaption("A text that is wider than this");
  EXPECT_GT(widget("fixed").width(), 100);
  EXPECT_EQ(widget("lblDate").width(), 10);
  EXPECT_EQ(application.platform().locale.UCase("\xC3\xB6lx"), "\xC3\x96LX");
}

struct PictureBoxTest : WindowTest {
  PictureBox& picture = add<PictureBox>(ControlKind::PictureBox, "pic", {0, 0, 100, 100});
};

TEST_F(PictureBoxTest, MoveRaisesResizeAtOnceWhenTheSizeChangedAndRefusesNegativeSizes) {
  std::vector<float> widths;
  picture.Resize = [&] { widths.push_back(picture.ScaleWidth()); };
  picture.setScaleModePixels();
  picture.Move(300, 150, 3000, 1500);
  picture.Move(600, 150, 3000, 1500);
  for (const auto& size : {std::pair{-15.F, 1500.F}, {1500.F, -15.F}, {NAN, 1500.F}})
    EXPECT_EQ(failureOf([&] { picture.Move(0, 0, size.first, size.second); }),
              ErrorKind::InvalidSize);
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
