#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/headless/window.hpp"
#include "platform/platform.hpp"

namespace quintara {

/// A desktop that nobody looks at, for a program that acts as its user: windows hold values and
/// images, message boxes are collected, today is a date that was handed over.
class HeadlessPlatform : public Toolkit,
                         public Screen,
                         public MessageBox,
                         public LocaleQuery,
                         public Clock,
                         public HelpLauncher {
 public:
  struct Message {
    std::string prompt;
    MsgStyle style = MsgStyle::Plain;
    std::string title;
  };

  /// The glyphs, rendered for the ratio, draw every text and must outlive the windows.
  HeadlessPlatform(GlyphSource& glyphs, double devicePixelRatio, Date today)
      : date(today), glyphs_(glyphs), ratio_(devicePixelRatio) {}

  [[nodiscard]] Platform with(HttpClient& http) {
    return {*this, *this, *this, http, *this, *this, *this};
  }

  std::unique_ptr<Window> newWindow(const WindowDesign& design) override;
  [[nodiscard]] float Width() const override { return 19200; }
  [[nodiscard]] float Height() const override { return 10800; }
  void setMousePointer(std::int16_t /*pointer*/) override {}
  void setMouseIcon(std::string_view /*picture*/) override {}
  /// Answered at once.
  void MsgBox(const std::string& prompt, MsgStyle style, const std::string& title) override;
  /// The user's separators, by the environment and as the window knows them.
  int GetLocaleInfoA(std::uint32_t locale, std::int32_t LCType, char* buffer, int length) override;
  [[nodiscard]] Date today() const override { return date; }
  [[nodiscard]] std::string applicationFolder() const override { return "."; }
  /// Throws LaunchFailed: a help viewer is a window.
  void WinHelpA(const std::string& helpFile, std::uint32_t command,
                const std::string& key) override;

  HeadlessWindow* window = nullptr;  ///< the first that was made, as long as its maker keeps it
  std::vector<Message> messages;
  Date date;

 protected:
  /// What newWindow makes.
  virtual std::unique_ptr<HeadlessWindow> makeWindow(const WindowDesign& design);

 private:
  GlyphSource& glyphs_;
  const double ratio_;
};

}  // namespace quintara
