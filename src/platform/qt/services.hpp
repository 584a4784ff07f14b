#pragma once

#include "platform/platform.hpp"

namespace quintara {

class QtLocaleQuery final : public LocaleQuery {
 public:
  int GetLocaleInfoA(std::uint32_t locale, std::int32_t LCType, char* buffer, int length) override;
  [[nodiscard]] std::string UCase(const std::string& text) const override;
};

class LocalClock final : public Clock {
 public:
  [[nodiscard]] Date today() const override;
};

/// Starts the help viewer that lies beside the program.
class QtHelpLauncher final : public HelpLauncher {
 public:
  [[nodiscard]] std::string applicationFolder() const override;
  void WinHelpA(const std::string& helpFile, std::uint32_t command,
                const std::string& key) override;
};

}  // namespace quintara
