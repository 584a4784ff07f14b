#include "service/prices/day_order.hpp"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

std::string shown(std::size_t line, std::string_view text) {
  return "line " + std::to_string(line) + ": " + inQuotes(text);
}

}  // namespace

std::string nameOf(DayOrder order) {
  switch (order) {
    case DayOrder::DayFirst:
      return "day, month, year";
    case DayOrder::MonthFirst:
      return "month, day, year";
    case DayOrder::YearFirst:
      return "year, month, day";
    default:
      return "";
  }
}

void OrderEvidence::add(std::size_t line, std::string_view text, const WrittenMoment& moment) {
  if (moment.day) {
    return;
  }
  std::array<std::optional<Day>, 3> days;
  std::transform(readings_.begin(), readings_.end(), days.begin(), [&](const Reading& reading) {
    const bool never = moment.points && reading.order == DayOrder::MonthFirst;
    return never ? std::nullopt : moment.dayIn(reading.order);
  });
  if (std::none_of(days.begin(), days.end(), [](const auto& day) { return day.has_value(); })) {
    return;
  }
  if (count_++ == 0) {
    firstLine_ = line;
    firstText_ = text;
  }
  points_ = points_ && moment.points;
  differ_ = differ_ || days[0] != days[1] || moment.shortYear;
  for (std::size_t i = 0; i < days.size(); ++i) {
    Reading& reading = readings_.at(i);
    const auto& day = days.at(i);
    if (!day) {
      if (reading.otherLine == 0) {
        reading.otherLine = line;
        reading.otherText = text;
      }
      continue;
    }
    reading.weekends += isWeekend(*day) ? 1 : 0;
    if (reading.valid++ > 0) {
      reading.rising = reading.rising && *day >= reading.last;
      reading.falling = reading.falling && *day <= reading.last;
      reading.steps += std::labs((*day - reading.last).count());
    }
    reading.last = *day;
  }
}

OrderFound OrderEvidence::decide(DayOrder region) const {
  if (count_ == 0) {
    return {};  // every date says it by itself
  }
  std::vector<const Reading*> left;
  for (const Reading& reading : readings_) {
    if ((count_ - reading.valid) * 20 <= count_ && reading.valid > 0) {
      left.push_back(&reading);
    }
  }
  if (left.empty()) {
    const Reading& day = readings_[0];
    const Reading& month = readings_[1];
    return {DayOrder::Unclear, "",
            "the dates contradict each other, " + shown(month.otherLine, month.otherText) +
                " cannot begin with the month, " + shown(day.otherLine, day.otherText) +
                " not with the day: write all dates like 2026-11-05"};
  }
  const auto found = [&](const std::string& why) {
    return OrderFound{left.front()->order, why, ""};
  };
  if (left.size() == 1) {
    const auto other =
        std::find_if(readings_.begin(), readings_.end(), [&](const Reading& reading) {
          return &reading != left.front() && reading.otherLine > 0 && reading.valid > 0;
        });
    return found(other != readings_.end()
                     ? shown(other->otherLine, other->otherText) + " fits no other order"
                     : "no other order fits");
  }
  if (!differ_) {
    return found("either order gives the same days");
  }
  // Keeps the readings that fit, if some do and others do not.
  const auto keep = [&](const auto& fits) {
    std::vector<const Reading*> fitting;
    std::copy_if(left.begin(), left.end(), std::back_inserter(fitting), fits);
    left = fitting.empty() ? left : fitting;
    return left.size() == 1;
  };
  if (keep([](const Reading* reading) { return reading->rising || reading->falling; })) {
    return found("only so the dates come one after the other");
  }
  if (keep([](const Reading* reading) { return reading->weekends == 0; })) {
    return found("only so no date is on a weekend");
  }
  // A file of prices has more than one row for a year.
  const auto isCloser = [](const Reading* a, const Reading* b) { return a->steps < b->steps; };
  const auto least = (*std::min_element(left.begin(), left.end(), isCloser))->steps;
  if (least > 0 && keep([&](const Reading* reading) { return reading->steps <= least * 100; })) {
    return found("only so the dates lie close together");
  }
  const auto isLeft = [&](DayOrder order) {
    return std::any_of(left.begin(), left.end(),
                       [&](auto reading) { return reading->order == order; });
  };
  if (points_ && isLeft(DayOrder::DayFirst)) {
    return {DayOrder::DayFirst, "dates with points begin with the day", ""};
  }
  if (region != DayOrder::Unclear && isLeft(region)) {
    return {region, "by the regional settings, as nothing in the file decides it", ""};
  }
  return {DayOrder::Unclear, "",
          shown(firstLine_, firstText_) +
              " may begin with the day or the month, and neither the other dates nor the regional "
              "settings (LC_TIME) decide it: write dates like 2026-11-05"};
}

}  // namespace quintara::quotes
