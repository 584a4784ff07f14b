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

Day localToday();

std::string tableDate(Day day);  ///< 5-Nov-26
std::string quoteDate(Day day);  ///< 11/5/2026

bool isWeekend(Day day);
int weekNumber(Day day);   ///< whole weeks, Monday to Sunday
int monthNumber(Day day);  ///< whole months

}  // namespace quintara::quotes
