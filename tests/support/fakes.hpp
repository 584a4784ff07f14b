#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/platform.hpp"
#include "support/recording_surface.hpp"
#include "support/wire.hpp"
#include "values/errors.hpp"
#include "values/text.hpp"

// The windowing layer without windows: controls keep what is assigned, and tests act as the user.
namespace quintara::test {

/// Sets the user's separator for one test.
struct ScopedSeparator {
  explicit ScopedSeparator(const std::string& decimal) { sDecimalSep = decimal; }
  ~ScopedSeparator() { sDecimalSep = ""; }
};

struct FakeLabel : Label {
  [[nodiscard]] std::string Caption() const override { return caption; }
  void setCaption(std::string_view text) override { caption = text; }
  [[nodiscard]] Colour ForeColor() const override { return foreColor; }
  std::string caption;
  Colour foreColor;
};
struct FakeTextBox : TextBox {
  [[nodiscard]] std::string Text() const override { return text; }
  void setText(std::string_view value) override { text = value; }
  void SetFocus() override { ++focused; }
  std::string text;
  int focused = 0;
};
struct FakeComboBox : ComboBox {
  void setEnabled(bool value) override { enabled = value; }
  void showNewItem(std::string_view) override {}
  void showIndex(std::int16_t) override {}
  bool enabled = true;
};
struct FakeCheckBox : CheckBox {
  void showValue(std::int16_t) override {}
};
struct FakePictureBox : Recording<PictureBox> {
  [[nodiscard]] float Left() const override { return 4800; }
  [[nodiscard]] float Top() const override { return 720; }
  void Move(float, float, float width, float height) override {
    if (width < 0 || height < 0) throw RuntimeError(ErrorKind::InvalidSize);
    pixelWidth = width / 15;
    pixelHeight = height / 15;
    if (Resize) Resize();
  }
  [[nodiscard]] std::int32_t Point(float, float) const override { return pointColour; }
  void setDescription(std::string_view text) override { description = text; }
  std::int32_t pointColour = -1;
  std::string description;
};

struct FakeWindow : Window {
  explicit FakeWindow(const WindowDesign& windowDesign) : design(windowDesign) {}
  void setTabOrder(std::span<const std::string>) override {}
  void Show() override {}
  void Move(float, float) override {}
  [[nodiscard]] std::string Caption() const override { return design.caption; }
  [[nodiscard]] float Width() const override { return design.scaleWidth; }
  [[nodiscard]] float Height() const override { return design.scaleHeight; }
  [[nodiscard]] float ScaleWidth() const override { return design.scaleWidth; }
  [[nodiscard]] float ScaleHeight() const override { return design.scaleHeight; }
  template <class Kind>
  static std::unique_ptr<Control> make() {
    return std::make_unique<Kind>();
  }
  std::unique_ptr<Control> create(const ControlDesign& control) override {
    // In the order of ControlKind.
    constexpr std::unique_ptr<Control> (*kMakers[])() = {
        make<FakeLabel>,    make<FakeTextBox>,   make<FakeComboBox>, make<FakeCheckBox>,
        make<FakeCheckBox>, make<Button>,        make<Button>,       make<Frame>,
        make<Image>,        make<FakePictureBox>};
    auto made = kMakers[static_cast<std::size_t>(control.kind)]();
    if (auto* label = dynamic_cast<FakeLabel*>(made.get())) label->foreColor = control.foreColor;
    return made;
  }
  WindowDesign design;
};

/// All services; tests script their answers and read what was asked of them.
struct FakePlatform : Toolkit, Screen, MessageBox, HttpClient, LocaleQuery, Clock, HelpLauncher {
  std::unique_ptr<Window> newWindow(const WindowDesign& design) override {
    auto made = std::make_unique<FakeWindow>(design);
    if (window == nullptr) window = made.get();
    log.push_back("window " + design.caption);
    return made;
  }
  [[nodiscard]] float Width() const override { return 19200; }
  [[nodiscard]] float Height() const override { return 10800; }
  void setMousePointer(std::int16_t value) override { pointer = value; }
  void setMouseIcon(std::string_view) override {}
  void MsgBox(const std::string& prompt, MsgStyle style, const std::string& title) override {
    log.push_back(std::to_string(static_cast<int>(style)) + " " + title + ": " + prompt);
  }
  std::string OpenURL(const std::string& url, int) override {
    log.push_back("get " + url);
    return url.find("/table.csv") != std::string::npos ? table() : quote();
  }
  int GetLocaleInfoA(std::uint32_t, std::int32_t type, char* buffer, int) override {
    buffer[0] = type == 14 ? '.' : ',';
    return 2;
  }
  [[nodiscard]] Date today() const override { return date; }
  [[nodiscard]] std::string applicationFolder() const override { return "/opt/quintara"; }
  void WinHelpA(const std::string& file, std::uint32_t command, const std::string& key) override {
    if (!launchError.empty()) throw RuntimeError(ErrorKind::LaunchFailed, launchError);
    log.push_back("help " + file + " " + std::to_string(command) + " [" + key + "]");
  }
  Platform platform() { return {*this, *this, *this, *this, *this, *this, *this}; }

  FakeWindow* window = nullptr;  ///< the first
  std::vector<std::string> log;
  std::int16_t pointer = 0;
  Date date = std::chrono::year{2026} / 11 / 16;  // a Monday
  std::string launchError;
  int bars = 200;
  std::function<std::string()> table = [this] { return test::table(bars); };
  std::function<std::string()> quote = [] { return test::quote(); };
};

}  // namespace quintara::test
