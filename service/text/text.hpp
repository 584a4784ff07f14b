#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Text rules that must not depend on the process locale: letters are ASCII letters, other bytes
/// stand for themselves.
namespace quintara::quotes {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isSmall(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }
/// Any byte that is not of ASCII is part of a letter here.
constexpr bool isLetter(char c) {
  return isSmall(c) || isCapital(c) || static_cast<signed char>(c) < 0;
}

std::string upperCase(std::string_view text);
bool equalIgnoringCase(std::string_view left, std::string_view right);
std::string lowerCase(std::string_view text);
std::string_view trimmed(std::string_view text);

/// The bytes of the blank at a place, 0 if there is none. Blanks are those of Unicode as well, line
/// ends, and marks of the writing direction, which nobody sees either.
std::size_t blankAt(std::string_view text, std::size_t at);
/// The text without such blanks at its ends.
std::string_view withoutBlanks(std::string_view text);

/// A number of one to nine decimal digits and nothing else.
std::optional<int> parseCount(std::string_view text);

/// Text from outside made fit for one line of a log or a reply: control characters, backslashes and
/// bytes that are not ASCII as \xNN.
std::string escaped(std::string_view text);

/// The same between quotation marks; only "..." where that would be long. Whole or not at all:
/// whoever hides a secret in it must not meet half of it.
std::string inQuotes(std::string_view text);

/// Everything but letters, digits and -._~ as %NN.
std::string percentEncoded(std::string_view text);

}  // namespace quintara::quotes
