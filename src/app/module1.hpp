#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "app/main_window.hpp"
#include "platform/platform.hpp"

namespace quintara {

/// The user's setting for a locale item (14 decimal separator, 15 thousands separator); empty when
/// it cannot be had.
std::string GetLocale(LocaleQuery& locale, std::int32_t LCType);

/// The program's entry point: reads the separators, then creates and shows the main window.
std::unique_ptr<frmQuintara> Main(const Platform& platform, const QuoteHosts& hosts);

}  // namespace quintara
