#pragma once

#include <filesystem>
#include <vector>

#include "chartbook/order.hpp"

namespace quintara::chartbook {

/// The lines of a watch list: a table with a header that names Ticker and perhaps other fields (see
/// kFieldNames) in any order and case; other columns are ignored, and so are lines without any
/// content. Where semicolons separate, a price may have a decimal comma. Fields that a line leaves
/// empty are those of `usual`.
/// Throws BadOrder for a file that cannot be read or names no Ticker, or none is in it.
std::vector<Order> readWatchList(const std::filesystem::path& file, const Order& usual);

}  // namespace quintara::chartbook
