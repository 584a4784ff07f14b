#pragma once

#include <string>
#include <string_view>

namespace quintara::quotes {

/// What a name of a column or a month is compared by: its letters and digits in lower case and
/// without accents, words parted by one blank. OpenPrice, <OPEN_PRICE> and "Open  price*" are one.
std::string plainName(std::string_view name);

}  // namespace quintara::quotes
