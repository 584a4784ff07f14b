#include "service/prices/moments.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "service/prices/date_words.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

using std::chrono::year_month_day;

constexpr std::size_t kMostTokens = 14;
constexpr std::size_t kLongestText = 80;

int fullYear(int year, bool isShort) {
  return !isShort ? year : year < 70 ? 2000 + year : 1900 + year;
}

// Years far above are of the Buddhist era.
std::optional<Day> dayFrom(int year, int month, int day) {
  constexpr int kBuddhist = 543;
  year -= year > 2099 ? kBuddhist : 0;
  return makeDay(year, static_cast<unsigned>(month), static_cast<unsigned>(day));
}

int numberOf(std::string_view digits) {
  int number = 0;
  for (const char c : digits.substr(0, 9)) {
    number = number * 10 + (c - '0');
  }
  return number;
}

int numberAt(std::string_view text, std::size_t at, std::size_t size) {
  return numberOf(text.substr(at, size));
}

std::optional<int> secondOf(int hour, int minute, int second) {
  const bool ends = hour == 24 && minute == 0 && second == 0;
  return (hour < 24 || ends) && minute < 60 && second <= 60
             ? std::optional((hour * 60 + minute) * 60 + second)
             : std::nullopt;
}

// 930, 1600 or 160000.
std::optional<int> compactTime(std::string_view digits) {
  const int number = numberOf(digits);
  if (digits.size() < 3 && number > 0) {
    return std::nullopt;
  }
  return digits.size() <= 4 ? secondOf(number / 100, number % 100, 0)
                            : secondOf(number / 10'000, number / 100 % 100, number % 100);
}

// Most tables have one of two forms, which are read without taking them apart:
// 2026-11-05 and 05/11/2026, with any sign of dates between the numbers.
std::optional<WrittenMoment> usualDate(std::string_view text) {
  const auto hasForm = [text](std::string_view form) {
    const auto fits = [](char c, char of) {
      return of == '0' ? isDigit(c) : std::string_view("-/.").find(c) != std::string_view::npos;
    };
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), fits);
  };
  WrittenMoment moment;
  if (hasForm("0000-00-00") && text[4] == text[7]) {
    moment.day = dayFrom(numberAt(text, 0, 4), numberAt(text, 5, 2), numberAt(text, 8, 2));
    return moment.day ? std::optional(moment) : std::nullopt;
  }
  if (hasForm("00-00-0000") && text[2] == text[5]) {
    moment.numbers = {numberAt(text, 0, 2), numberAt(text, 3, 2), numberAt(text, 6, 4)};
    moment.points = text[2] == '.';
    return moment;
  }
  return std::nullopt;
}

}  // namespace

std::optional<Day> WrittenMoment::dayIn(DayOrder order) const {
  if (day) {
    return day;
  }
  const auto [one, two, three] = numbers;
  // Dates with points never begin with the month, whatever others of the table do.
  const bool dayIsFirst = order == DayOrder::DayFirst || (points && order != DayOrder::YearFirst);
  if (dayIsFirst) {
    return dayFrom(fullYear(three, shortYear), two, one);
  }
  if (order == DayOrder::MonthFirst) {
    return dayFrom(fullYear(three, shortYear), one, two);
  }
  return order == DayOrder::YearFirst && shortYear ? dayFrom(fullYear(one, true), two, three)
                                                   : std::nullopt;
}

const MomentReader::Meaning& MomentReader::meaningOf(std::string_view word) {
  constexpr std::size_t kMostWords = 64;
  for (const auto& [known, meaning] : words_) {
    if (known == word) {
      return meaning;
    }
  }
  if (words_.size() >= kMostWords) {
    words_.clear();
  }
  words_.emplace_back(
      word, Meaning{monthNamed(word), isDayOfWeek(word), isFiller(word), halfOfDay(word)});
  return words_.back().second;
}

// Parts the text into numbers and words; false for what is no date for its
// length alone.
bool MomentReader::split(std::string_view text) {
  tokens_.clear();
  if (text.size() > kLongestText) {
    return false;
  }
  char before = '\0';
  for (std::size_t at = 0; at < text.size();) {
    if (const auto blank = blankAt(text, at); blank > 0) {
      before = before == '\0' ? ' ' : before;
      at += blank;
      continue;
    }
    const bool number = isDigit(text[at]);
    if (!number && !isLetter(text[at])) {
      before = text[at];
      ++at;
      continue;
    }
    const auto begin = at;
    while (at < text.size() && (number ? isDigit(text[at]) : isLetter(text[at])) &&
           (number || blankAt(text, at) == 0)) {
      ++at;
    }
    const auto piece = text.substr(begin, at - begin);
    if (tokens_.size() == kMostTokens) {
      return false;
    }
    tokens_.push_back({number, before, piece, number ? Meaning{} : meaningOf(piece),
                       number ? numberOf(piece) : 0});
    before = '\0';
  }
  return !tokens_.empty() && tokens_.front().before != '-' && tokens_.front().before != '+';
}

// Seconds since 1970 or finer, by the number of digits.
bool MomentReader::takeStamp(WrittenMoment& moment) const {
  const auto digits = tokens_.front().text;
  const bool alone =
      tokens_.size() == 1 || (tokens_.size() == 2 && tokens_[1].number && tokens_[1].before == '.');
  std::int64_t unit = 0;
  switch (digits.size()) {
    case 9:
    case 10:
    case 11:
      unit = 1;
      break;
    case 12:
    case 13:
      unit = 1000;
      break;
    case 15:
    case 16:
      unit = 1'000'000;
      break;
    case 18:
    case 19:
      unit = 1'000'000'000;
      break;
    default:
      break;
  }
  std::int64_t count = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), count);
  if (!alone || unit == 0 || read.ec != std::errc()) {
    return false;
  }
  const std::chrono::sys_seconds time{std::chrono::seconds{count / unit} +
                                      std::chrono::hours{utcOffsetHours_}};
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const year_month_day date{day};
  moment.day = makeDay(static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                       static_cast<unsigned>(date.day()));
  moment.second = static_cast<int>((time - day).count());
  moment.stamp = true;
  return moment.day.has_value();
}

// 20261105, 261105, 05112026, and with the time of day 202611051600.
bool MomentReader::takeCompact(std::size_t& at, WrittenMoment& moment) const {
  const auto digits = tokens_[at].text;
  const auto number = [&](std::size_t begin, std::size_t size) {
    return numberAt(digits, begin, size);
  };
  ++at;
  if (digits.size() == 6) {
    moment.numbers = {number(0, 2), number(2, 2), number(4, 2)};
    moment.shortYear = true;
    return true;
  }
  if (digits.size() == 8 || digits.size() == 12 || digits.size() == 14) {
    moment.day = dayFrom(number(0, 4), number(4, 2), number(6, 2));
    if (moment.day && digits.size() > 8) {
      const auto second =
          secondOf(number(8, 2), number(10, 2), digits.size() > 12 ? number(12, 2) : 0);
      moment.second = second.value_or(0);
      moment.day = second && at == tokens_.size() ? moment.day : std::nullopt;
    }
    if (!moment.day && digits.size() == 8) {
      moment.numbers = {number(0, 2), number(2, 2), number(4, 4)};
      return true;
    }
  }
  if (!moment.day && at == 1 && takeStamp(moment)) {
    at = tokens_.size();
  }
  return moment.day.has_value();
}

// A word that may be a month as well is a day where the date has its month
// elsewhere.
bool MomentReader::namesDay(std::size_t at) const {
  const Meaning& meaning = tokens_[at].meaning;
  if (!meaning.day || meaning.month == 0) {
    return meaning.day;
  }
  const auto isLater = [&](std::size_t later) {
    return later < tokens_.size() && tokens_[later].meaning.month > 0;
  };
  const auto isHour = [&](std::size_t later) {
    return later + 1 < tokens_.size() && tokens_[later + 1].before == ':';
  };
  const auto isNumber = [&](std::size_t later) {
    return later < tokens_.size() && tokens_[later].number && !isHour(later);
  };
  return isLater(at + 1) || isLater(at + 2) || isLater(at + 3) ||
         (isNumber(at + 1) && isNumber(at + 2) && isNumber(at + 3) &&
          tokens_[at + 2].digits() <= 2 && tokens_[at + 2].before == tokens_[at + 3].before);
}

bool MomentReader::takeParts(std::size_t& at, WrittenMoment& moment) const {
  std::array<const Token*, 3> parts{};
  std::size_t count = 0;
  int month = -1;  // the place of a name
  for (; at < tokens_.size() && count < parts.size(); ++at) {
    const Token& token = tokens_[at];
    if (token.number) {
      if (token.before == ':' || token.digits() > 4 || (token.digits() == 3 && count > 0)) {
        return false;
      }
      parts.at(count++) = &token;
    } else if (namesDay(at)) {
      continue;
    } else if (token.meaning.month > 0 && month < 0) {
      month = static_cast<int>(count);
      parts.at(count++) = &token;
    } else if (!token.meaning.filler) {
      return false;
    }
  }
  // What runs on with a colon was a time of day.
  const bool clock = at < tokens_.size() && tokens_[at].number && tokens_[at].before == ':';
  if (count < parts.size() || clock) {
    return false;
  }
  const auto [first, second, third] = parts;
  const bool yearFirst = first->digits() >= 3;
  const bool yearLast = third->digits() == 4;
  if (month >= 0) {
    const int named = parts.at(static_cast<std::size_t>(month))->meaning.month;
    const Token* const year = yearFirst ? first : third;
    const Token* const day = yearFirst    ? (month == 1 ? third : second)
                             : month == 0 ? second
                                          : first;
    moment.day = dayFrom(fullYear(year->value, year->digits() == 2), named, day->value);
    return moment.day.has_value();
  }
  if (second->digits() > 2 || (yearFirst && yearLast)) {
    return false;
  }
  if (yearFirst) {
    // A year of three digits counts from the founding of a republic.
    constexpr int kRepublic = 1911;
    const int year = first->value + (first->digits() == 3 ? kRepublic : 0);
    moment.day = dayFrom(year, second->value, third->value);
    return moment.day.has_value();
  }
  moment.numbers = {first->value, second->value, third->value};
  moment.shortYear = !yearLast;
  moment.points = second->before == '.';
  return yearLast || third->digits() == 2 || first->digits() == 2;
}

bool MomentReader::takeDate(std::size_t& at, WrittenMoment& moment) const {
  while (at + 1 < tokens_.size() && !tokens_[at].number && namesDay(at)) {
    ++at;
  }
  const Token& first = tokens_[at];
  const bool compact = first.digits() == 6 || first.digits() >= 8;
  return compact ? takeCompact(at, moment) : takeParts(at, moment);
}

// +01:00, EST, GMT-5, America/New_York.
bool MomentReader::isZone(std::size_t at) const {
  std::size_t signs = 0;
  for (const std::size_t begin = at; at < tokens_.size(); ++at) {
    const Token& token = tokens_[at];
    const bool sign = token.before == '+' || token.before == '-';
    signs += token.number && sign ? 1 : 0;
    if (token.number && !sign && (token.before != ':' || at == begin)) {
      return false;
    }
  }
  return signs <= 1;
}

// The second of the day that the tokens from a place on say; all of them have
// to belong to it.
std::optional<int> MomentReader::takeTime(std::size_t at) const {
  const auto size = tokens_.size();
  char half = '\0';
  const auto takeHalf = [&] {
    while (at < size && !tokens_[at].number && half == '\0' && tokens_[at].meaning.half != '\0') {
      half = tokens_[at++].meaning.half;
      at += at < size && (tokens_[at].text == "m" || tokens_[at].text == "M") ? 1 : 0;  // p. m.
    }
  };
  takeHalf();
  if (at >= size || !tokens_[at].number) {
    return std::nullopt;
  }
  std::array<int, 3> clock{};
  std::size_t parts = 0;
  std::optional<int> second;
  const Token& first = tokens_[at];
  if (first.digits() >= 3) {
    second = first.digits() <= 6 ? compactTime(first.text) : std::nullopt;
    ++at;
  } else {
    clock[parts++] = first.value;
    ++at;
    while (at < size && parts < clock.size()) {
      const bool unit = !tokens_[at].number && at + 1 < size && tokens_[at + 1].number &&
                        tokens_[at].meaning.half == '\0' && tokens_[at + 1].before == '\0';
      const auto next = at + (unit ? 1 : 0);  // 16h30
      const Token& token = tokens_[next];
      const bool joined = unit || token.before == ':' || token.before == '.';
      if (!token.number || !joined || token.digits() > 2) {
        break;
      }
      clock.at(parts++) = token.value;
      at = next + 1;
    }
    second = secondOf(clock[0], clock[1], clock[2]);
  }
  if (at < size && tokens_[at].number &&
      (tokens_[at].before == '.' || tokens_[at].before == ',' ||
       (parts == 3 && tokens_[at].before == ':'))) {
    ++at;  // a fraction of a second
  }
  takeHalf();
  const bool hourAlone = parts == 1 && half == '\0' && at >= size;
  if (!second || hourAlone || size - at > 4 || !isZone(at)) {
    return std::nullopt;
  }
  const int hour = *second / 3600;
  if (half != '\0' && (hour == 0 || hour > 12)) {
    return (half == 'p') == (hour > 12) ? second : std::nullopt;
  }
  const int noon = half == 'p' && hour < 12 ? kNoon : half == 'a' && hour == 12 ? -kNoon : 0;
  return *second + noon;
}

std::optional<int> MomentReader::readTime(std::string_view time) {
  if (!split(time)) {
    return std::nullopt;
  }
  if (tokens_.size() == 1 && tokens_.front().number && tokens_.front().digits() <= 6) {
    return compactTime(tokens_.front().text);
  }
  return takeTime(0);
}

// A usual date with the time behind it, or by itself.
std::optional<WrittenMoment> MomentReader::readUsual(std::string_view date, std::string_view time) {
  constexpr std::size_t kSize = 10;
  const bool behind = date.size() > kSize && (date[kSize] == ' ' || date[kSize] == 'T');
  if (behind && time.empty()) {
    time = date.substr(kSize + 1);
    date = date.substr(0, kSize);
  }
  auto moment = usualDate(date);
  if (moment && !time.empty()) {
    const auto second = readTime(time);
    if (!second) {
      return std::nullopt;
    }
    moment->second = *second;
  }
  return moment;
}

std::optional<WrittenMoment> MomentReader::read(std::string_view date, std::string_view time) {
  if (const auto usual = readUsual(date, time)) {
    return usual;
  }
  WrittenMoment moment;
  std::size_t at = 0;
  if (!split(date) || !takeDate(at, moment)) {
    return std::nullopt;
  }
  const auto isWord = [&](bool fits) { return at < tokens_.size() && !tokens_[at].number && fits; };
  while (isWord(true) && (tokens_[at].meaning.day || tokens_[at].meaning.filler ||
                          tokens_[at].text == "T" || tokens_[at].text == "t")) {
    ++at;
  }
  const bool zoneAlone =
      at < tokens_.size() && (tokens_[at].before == '+' || tokens_[at].text == "Z");
  if (at < tokens_.size() && !zoneAlone) {
    const auto second = takeTime(at);
    if (!second) {
      return std::nullopt;
    }
    moment.second = *second;
  }
  if (!time.empty()) {
    const auto second = readTime(time);
    if (!second) {
      return std::nullopt;
    }
    moment.second = *second;
  }
  return moment;
}

}  // namespace quintara::quotes
