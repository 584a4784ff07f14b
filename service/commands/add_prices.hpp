#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "service/prices/calendar.hpp"

namespace quintara::quotes {

/// Price files to be put into the price folder.
struct AddRequest {
  std::vector<std::filesystem::path> files;
  std::string ticker;    ///< of the one file; empty for that of each file's name
  bool replace = false;  ///< another file of the ticker
};

/// Puts each file into the folder whole, or not at all if it holds no prices up to `today` or
/// another file of its ticker is there. Writes how each was read and, after an empty line, what
/// came of it, one line a file. Returns whether all files are in the folder.
bool addPrices(const std::filesystem::path& folder, const AddRequest& request, Day today,
               std::ostream& out);

}  // namespace quintara::quotes
