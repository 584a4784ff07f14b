#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "service/prices/calendar.hpp"

namespace quintara::quotes {

/// What 11/05/2026 means, or 26/11/05. Unclear dates are not guessed.
enum class DayOrder { Unclear, MonthFirst, DayFirst, YearFirst };

inline constexpr int kNoon = 12 * 3600;  ///< seconds of the day

/// A date as it stands, perhaps with a time of day.
struct WrittenMoment {
  std::optional<Day> day;        ///< where the text itself says it
  std::array<int, 3> numbers{};  ///< otherwise, in the order in which they stand
  bool shortYear = false;  ///< the year has two digits and may be the first or the last number
  bool points = false;     ///< with points between them; such dates never begin with the month
  int second = 0;          ///< of the day; 0 without a time
  bool stamp = false;      ///< a count of seconds since 1970

  /// No value where the calendar has no such day, or the order says nothing.
  std::optional<Day> dayIn(DayOrder order) const;
};

/// Reads dates with or without a time of day: 2026-11-05T16:00:00+01:00, 20261105, 5.11.2026,
/// 05/11/26, 5-Nov-26, Thu Nov 5, 2026 4:00 PM, 2026年11月5日, names in many languages, seconds or
/// milliseconds since 1970. Times of day are those of the exchange, zones behind them do not count.
class MomentReader {
 public:
  explicit MomentReader(int utcOffsetHours = 0) : utcOffsetHours_(utcOffsetHours) {}

  /// `time` may stand by itself: 16:00, 160000, 4 PM.
  std::optional<WrittenMoment> read(std::string_view date, std::string_view time = {});
  /// The second of the day.
  std::optional<int> readTime(std::string_view time);

 private:
  struct Meaning {
    int month = 0;
    bool day = false;
    bool filler = false;
    char half = '\0';
  };
  struct Token {
    bool number = false;
    char before = '\0';  ///< the sign before it, a blank for blanks alone
    std::string_view text;
    Meaning meaning;  ///< of a word
    int value = 0;    ///< of a number, which must not have more than nine digits
    std::size_t digits() const { return number ? text.size() : 0; }
  };
  using Tokens = std::vector<Token>;

  std::optional<WrittenMoment> readUsual(std::string_view date, std::string_view time);
  bool split(std::string_view text);
  const Meaning& meaningOf(std::string_view word);
  bool takeDate(std::size_t& at, WrittenMoment& moment) const;
  bool takeParts(std::size_t& at, WrittenMoment& moment) const;
  bool takeCompact(std::size_t& at, WrittenMoment& moment) const;
  bool takeStamp(WrittenMoment& moment) const;
  std::optional<int> takeTime(std::size_t at) const;
  bool isZone(std::size_t at) const;
  bool namesDay(std::size_t at) const;

  int utcOffsetHours_;
  Tokens tokens_;
  std::vector<std::pair<std::string, Meaning>> words_;  ///< those of this table, to look up once
};

}  // namespace quintara::quotes
