#pragma once

#include "platform/locale_info.hpp"

namespace quintara {

/// The user's, as LC_ALL, LC_NUMERIC and LANG name the locale; empty when unknown. From the same
/// kind of tables as the window has it: also where the C library has no locale of that name.
Separators userSeparators();

}  // namespace quintara
