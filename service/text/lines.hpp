#pragma once

#include <string_view>

namespace quintara::quotes {

/// The text behind the mark that some editors and exports put at its start.
std::string_view withoutByteOrderMark(std::string_view text);

/// Takes one line from the front of the text, without its end and the blanks around it.
std::string_view takeLine(std::string_view& text);

}  // namespace quintara::quotes
