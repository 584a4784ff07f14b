#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quintara::quotes {

/// A calendar day without a time zone, counted from 1970-01-01.
using Day = std::chrono::sys_days;

/// What day it is; the program asks the computer's local date, a test fixes it.
using Today = std::function<Day()>;

/// No value for a day that the calendar does not have (30 February) or a year outside 1900 to 2099.
std::optional<Day> makeDay(int year, unsigned month, unsigned day);

/// The month with this name of three letters in any case, or 0.
int monthNamed(std::string_view name);

/// Decimal digits; the month may be a name as above. Two-digit years are 1970 to
/// 2069.
std::optional<Day> makeDay(std::string_view year, std::string_view month, std::string_view day);

Day localToday();

/// The dates of price files: 2026-11-05, 5-Nov-26 or 5-Nov-2026.
std::optional<Day> parseDay(std::string_view text);

std::string tableDate(Day day);  ///< 5-Nov-26
std::string quoteDate(Day day);  ///< 11/5/2026

bool isWeekend(Day day);
int weekNumber(Day day);   ///< whole weeks, Monday to Sunday
int monthNumber(Day day);  ///< whole months

}  // namespace quintara::quotes
