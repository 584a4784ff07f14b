#pragma once

#include <string>
#include <string_view>

#include "service/prices/price_rows.hpp"

namespace quintara::quotes {

/// Whether the text is a JSON pointer, as in /data/prices or /result/0.
bool isJsonPath(const std::string& text);

/// Daily prices out of JSON. At `path` stand
/// - a list of rows, each an object, or a list whose fields are named by their places from 0 on;
/// - an object of rows, whose date is their name unless they have a date themselves;
/// - an object of lists, one for each field;
/// - or one row.
/// Text with one object a line is a list of rows.
/// A field is a name (of an object's member, in any case), a place in a list, or a path like /bid/o
/// that begins at the row. No rows are no mistake, unless a message stands beside them.
PriceRows parseJsonRows(std::string_view text, const std::string& path, const RowRules& rules);

}  // namespace quintara::quotes
