#pragma once

#include <string_view>

namespace quintara::quotes {

/// The month, 1 to 12, with this name in any language of the table, in full or cut to three letters
/// or more, in any case and with or without accents; 0 for what is no name or that of several.
int monthNamed(std::string_view word);

/// Whether a word is the name of a day of the week, in full or cut to two letters or more.
bool isDayOfWeek(std::string_view word);

/// Whether a word may stand between the parts of a date and says nothing: 5 *de* novembre, 5*th*.
bool isFiller(std::string_view word);

/// Before or after noon: 'a', 'p', or 0 for neither.
char halfOfDay(std::string_view word);

}  // namespace quintara::quotes
