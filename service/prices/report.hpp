#pragma once

#include <iosfwd>

#include "service/prices/price_file.hpp"

namespace quintara::quotes {

/// For the trader who asks what became of a table, in lines that begin with two blanks: how many
/// rows are used, and the first twenty that are left out with the reason.
void reportRows(const PriceRows& rows, std::ostream& out);

/// Besides the rows how the file was understood. Why there are no bars at all is not said.
void report(const PriceFile& file, std::ostream& out);

}  // namespace quintara::quotes
