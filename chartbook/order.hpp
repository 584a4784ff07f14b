#pragma once

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quintara::chartbook {

/// What one chart can be told, in the order of a watch list's columns.
enum Field : std::size_t {
  kTicker,
  kSpan,
  kInterval,
  kType,
  kFirstPoint,
  kShow = kFirstPoint + 8,
  kTargets,
  kFieldCount
};
inline constexpr std::array<const char*, kFieldCount> kFieldNames{
    "Ticker", "Span", "Interval", "Type", "A1", "A2",   "A3",
    "A4",     "B1",   "B2",       "C1",   "C2", "Show", "Targets"};

/// One chart as it was asked for, each field as text; what is empty stays as the window starts.
struct Order {
  std::array<std::string, kFieldCount> fields;
  std::size_t line = 0;  ///< of the watch list; 0 without one
  std::string problem;   ///< why this line of the list cannot be understood; empty if it can
};

/// An order that makes no sense; says why in one line.
struct BadOrder : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The pieces of a list between commas, semicolons and blanks.
std::vector<std::string> pieces(std::string_view text);

/// As the quote service spells it: in capitals.
void setTicker(Order& order, std::string_view text);

/// Puts "A1=82.59,B1=93.6" into the fields of the points. Throws BadOrder for another name.
void setPoints(Order& order, std::string_view text);

/// A target of a point set.
struct Target {
  std::string set;   ///< A1 to A4
  std::string name;  ///< 1:1, 1.382 or 1.618, as typed
};
/// Reads "A1=1:1,1.618 A2=1.382". Throws BadOrder for a target before the first set.
std::vector<Target> targetsOf(std::string_view text);

}  // namespace quintara::chartbook
