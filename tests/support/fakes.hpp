#pragma once

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/headless/controls.hpp"
#include "platform/headless/glyphs.hpp"
#include "platform/headless/platform.hpp"
#include "platform/locale_info.hpp"
#include "platform/twips.hpp"
#include "support/recording_surface.hpp"
#include "support/scoped_separator.hpp"
#include "support/wire.hpp"
#include "values/errors.hpp"

// The windowing layer without windows, with drawings and requests written down.
namespace quintara::test {

struct FakePictureBox : Recording<PictureBox> {
  explicit FakePictureBox(const ControlDesign& design) : place(design) {
    Move(place.left, place.top, place.width, place.height);
  }
  [[nodiscard]] float Left() const override { return place.left; }
  [[nodiscard]] float Top() const override { return place.top; }
  void Move(float, float, float width, float height) override {
    if (width < 0 || height < 0) throw RuntimeError(ErrorKind::InvalidSize);
    pixelWidth = width / kTwipsPerPixel;
    pixelHeight = height / kTwipsPerPixel;
    if (Resize) Resize();
  }
  [[nodiscard]] std::int32_t Point(float, float) const override { return pointColour; }
  void setDescription(std::string_view text) override { description = text; }
  const ControlDesign place;
  std::int32_t pointColour = -1;
  std::string description;
};

/// Writes down what becomes of it, and with which step's text the progress window goes. Takes no
/// control that reaches out of its container, and no text that is not in the middle of a dialog.
struct FakeWindow final : HeadlessWindow {
  FakeWindow(const WindowDesign& window, GlyphSource& glyphs, std::vector<std::string>& written)
      : HeadlessWindow(window, glyphs, 1), design(window), log(written) {
    designs[""].width = design.scaleWidth;
    designs[""].height = design.scaleHeight;
    log.push_back((design.fixedDialog ? "dialog " : "window ") + design.caption);
  }
  ~FakeWindow() override {
    if (designs.contains("lblInfo")) log.push_back("closed " + control<Label>("lblInfo").Caption());
  }
  void Show() override { log.emplace_back("shown"); }
  void Move(float left, float top) override {
    log.push_back("at " + FakePictureBox::point(left, top));
  }
  void setTabOrder(std::span<const std::string> names) override {
    tabOrder = {names.begin(), names.end()};
  }
  std::unique_ptr<Control> create(const ControlDesign& control) override {
    const ControlDesign& in = designs.at(control.container);
    if (control.left < 0 || control.left + control.width > in.width || control.top < 0 ||
        control.top + control.height > in.height)
      throw std::invalid_argument(control.name + " reaches out of its container");
    if (design.fixedDialog && control.kind == ControlKind::Label && !control.look.centred)
      throw std::invalid_argument(control.name + " is not centred");
    designs[control.name] = control;
    if (control.kind == ControlKind::PictureBox) return std::make_unique<FakePictureBox>(control);
    return HeadlessWindow::create(control);
  }
  const WindowDesign design;
  std::vector<std::string>& log;
  std::map<std::string, ControlDesign> designs;  ///< by name; the window's own is ""
  std::vector<std::string> tabOrder;
};

/// All services; tests script their answers and read what was asked of them.
struct FakePlatform : NoGlyphs, HeadlessPlatform, HttpClient {
  FakePlatform() : HeadlessPlatform(*this, 1, std::chrono::year{2026} / 11 / 16) {}  // a Monday
  std::unique_ptr<HeadlessWindow> makeWindow(const WindowDesign& design) override {
    return std::make_unique<FakeWindow>(design, *this, log);
  }
  void setMousePointer(std::int16_t value) override { pointer = value; }
  void setMouseIcon(std::string_view picture) override { icon = picture; }
  void MsgBox(const std::string& prompt, MsgStyle style, const std::string& title) override {
    log.push_back(std::to_string(static_cast<int>(style)) + " " + title + ": " + prompt);
  }
  std::string OpenURL(const std::string& url, int dataType) override {
    log.push_back((dataType == 0 ? "get " : "get bytes ") + url);
    return url.find("/table.csv") != std::string::npos ? table() : quote();
  }
  int GetLocaleInfoA(std::uint32_t, std::int32_t type, char* buffer, int length) override {
    return localeInfo({".", ","}, type, buffer, length);
  }
  [[nodiscard]] std::string applicationFolder() const override { return "/opt/quintara"; }
  void WinHelpA(const std::string& file, std::uint32_t command, const std::string& key) override {
    if (!launchError.empty()) throw RuntimeError(ErrorKind::LaunchFailed, launchError);
    log.push_back("help " + file + " " + std::to_string(command) + " [" + key + "]");
  }
  Platform platform() { return with(*this); }

  std::vector<std::string> log;
  std::int16_t pointer = 0;
  std::string icon;
  std::string launchError;
  int bars = 200;
  std::function<std::string()> table = [this] { return test::table(bars); };
  std::function<std::string()> quote = [] { return test::quote(); };
};

}  // namespace quintara::test
