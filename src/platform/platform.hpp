#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/window.hpp"

namespace quintara {

using Date = std::chrono::year_month_day;

/// What Screen's mouse pointer can be.
inline constexpr std::int16_t kArrowPointer = 0;
inline constexpr std::int16_t kCrossHairPointer = 2;
inline constexpr std::int16_t kPicturePointer = 99;  ///< the picture of MouseIcon

/// The screen and its one application-wide mouse pointer.
class Screen {
 public:
  virtual ~Screen() = default;
  [[nodiscard]] virtual float Width() const = 0;  ///< twips
  [[nodiscard]] virtual float Height() const = 0;
  /// In force over every window until set again.
  virtual void setMousePointer(std::int16_t pointer) = 0;
  /// The picture for kPicturePointer, by its name in the program's art.
  virtual void setMouseIcon(std::string_view picture) = 0;
};

enum class MsgStyle : std::uint8_t { Plain = 0, Stop = 16, Exclamation = 48, Information = 64 };

class MessageBox {
 public:
  virtual ~MessageBox() = default;
  /// Modal, with an OK button; returns when it was answered. Plain text; CR LF breaks the line.
  virtual void MsgBox(const std::string& prompt, MsgStyle style, const std::string& title) = 0;
};

class HttpClient {
 public:
  virtual ~HttpClient() = default;
  /// GETs a plain-HTTP URL and returns the whole body (data type 0: as text). Of the URL only what
  /// a request line cannot hold is encoded. Throws TransferFailed when the transfer fails, takes
  /// over 60 seconds (10 to connect), is answered with status 400 or above, has headers over 256
  /// KB, or a body that is cut short, over 8 MB or over 200,000 lines.
  virtual std::string OpenURL(const std::string& url, int dataType) = 0;
};

/// The desktop's regional settings.
class LocaleQuery {
 public:
  virtual ~LocaleQuery() = default;
  /// Writes locale item `LCType` (14 decimal separator, 15 thousands separator) and a terminating
  /// zero into the buffer; returns the characters written with the zero, or 0 on failure.
  virtual int GetLocaleInfoA(std::uint32_t locale, std::int32_t LCType, char* buffer,
                             int length) = 0;
  /// The text in upper case: here ASCII letters alone, on a desktop those of every script.
  [[nodiscard]] virtual std::string UCase(const std::string& text) const;
};

class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual Date today() const = 0;  ///< the computer's local date
};

class HelpLauncher {
 public:
  virtual ~HelpLauncher() = default;
  /// The folder of the program file, without a trailing separator (but "/" at the root).
  [[nodiscard]] virtual std::string applicationFolder() const = 0;
  /// Opens a help file in the help viewer at its index (command 261) with `key` typed. The viewer
  /// is a window of its own, so no owner is named.
  /// Throws LaunchFailed, with a description, when the viewer could not be started.
  virtual void WinHelpA(const std::string& helpFile, std::uint32_t command,
                        const std::string& key) = 0;
};

class Toolkit {
 public:
  virtual ~Toolkit() = default;
  virtual std::unique_ptr<Window> newWindow(const WindowDesign& design) = 0;
};

/// All that the program asks of its platform, handed over at start-up.
struct Platform {
  Toolkit& toolkit;
  Screen& screen;
  MessageBox& messageBox;
  HttpClient& http;
  LocaleQuery& locale;
  Clock& clock;
  HelpLauncher& help;
};

}  // namespace quintara
