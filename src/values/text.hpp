#pragma once

#include <string>
#include <string_view>

namespace quintara {

/// The user's separators, read once at start-up and never changed afterwards; empty when the
/// desktop could not supply them.
extern std::string sDecimalSep;
extern std::string sThousandSep;

/// The decimal separator in force: a point when there is none.
inline std::string_view decimalSep() {
  return sDecimalSep.empty() ? "." : std::string_view(sDecimalSep);
}

// Writing.

/// The default text of a single: at most 7 significant digits, the user's decimal separator, no
/// thousands separators, no trailing zeros, minus zero as 0. Below 0.0001 and from 10,000,000 up
/// it is in plain digits too, never an exponent, and a price of that size never reads back larger.
std::string defaultText(float value);

/// Print's form of a whole number: a blank or a minus sign, the digits, a blank.
std::string printForm(double whole);

/// Two decimals, halves away from zero, the user's decimal separator (pattern "0.00").
std::string twoDecimals(float value);

// Reading. "inf", "nan" and hexadecimal floating-point notation are not numbers to any of these.

/// The locale rule: the whole text is one number with the user's decimal separator, perhaps with
/// blanks, tabs, carriage returns or line feeds around it. No thousands separators.
/// Throws TypeMismatch when the text is no number, Overflow beyond double range.
double readLocaleNumber(std::string_view text);

/// The numeric-prefix rule: the leading number of the text, always with a full stop, blanks, tabs
/// and line feeds skipped wherever they stand, an exponent with E or D, "&H" and "&O" for
/// hexadecimal and octal integers; 0 when there is none. Throws Overflow beyond double range.
double readLeadingNumber(std::string_view text);

}  // namespace quintara
