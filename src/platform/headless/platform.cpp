#include "platform/headless/platform.hpp"

#include "platform/headless/separators.hpp"
#include "platform/locale_info.hpp"
#include "values/errors.hpp"

namespace quintara {

std::unique_ptr<Window> HeadlessPlatform::newWindow(const WindowDesign& design) {
  std::unique_ptr<HeadlessWindow> made = makeWindow(design);
  if (window == nullptr) {
    window = made.get();
  }
  return made;
}

std::unique_ptr<HeadlessWindow> HeadlessPlatform::makeWindow(const WindowDesign& design) {
  return std::make_unique<HeadlessWindow>(design, glyphs_, ratio_);
}

void HeadlessPlatform::MsgBox(const std::string& prompt, MsgStyle style, const std::string& title) {
  messages.push_back({prompt, style, title});
}

int HeadlessPlatform::GetLocaleInfoA(std::uint32_t /*locale*/, std::int32_t LCType, char* buffer,
                                     int length) {
  return localeInfo(userSeparators(), LCType, buffer, length);
}

void HeadlessPlatform::WinHelpA(const std::string& helpFile, std::uint32_t /*command*/,
                                const std::string& /*key*/) {
  throw RuntimeError(ErrorKind::LaunchFailed, "There is no window to show " + helpFile + " in.");
}

}  // namespace quintara
