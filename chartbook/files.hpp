#pragma once

#include <filesystem>

#include "chartbook/reports.hpp"
#include "service/prices/calendar.hpp"

namespace quintara::chartbook {

/// levels.csv: a line for each level of each chart, in the order of the list.
void writeLevelsFile(const std::filesystem::path& path, const Reports& reports);

/// index.html: one page of pictures, levels and distances, nearest to a level first, that loads
/// nothing but the pictures beside it.
void writePage(const std::filesystem::path& path, const Reports& reports, quotes::Day today);

/// Text between tags or in an attribute.
std::string htmlEscaped(std::string_view text);

}  // namespace quintara::chartbook
