#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "service/prices/price.hpp"

namespace quintara::quotes {

/// A volume as tables have it: 18200, 18,200, 1.2M, 987K, 3 Mrd., 1.2E+07, or a word for none,
/// which is 0. `comma` says the decimal sign, unless no price of the table shows it (`known`): then
/// a sign with three digits behind it parts groups.
std::optional<Decimal> parseVolume(std::string_view text, bool comma, bool known,
                                   std::string& plain);

}  // namespace quintara::quotes
