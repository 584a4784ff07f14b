#include "service/commands/check.hpp"

#include <algorithm>
#include <array>
#include <ostream>

#include "service/desk/replies.hpp"
#include "service/desk/request.hpp"
#include "service/prices/bars.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kShownBars = 5;

// How far the charts of the window reach back, the shortest first.
struct Reach {
  const char* chart;
  std::chrono::days days;
};
constexpr auto kReaches = std::to_array<Reach>({
    {"Daily, 6 months", std::chrono::days{182}},
    {"Daily, 12 months", std::chrono::days{365}},
    {"Daily, 18 months", std::chrono::days{547}},
    {"Daily, 24 months", std::chrono::days{730}},
    {"Weekly", std::chrono::weeks{220}},
    {"Monthly", {}},
});
constexpr std::chrono::months kMonthlyReach{120};

bool reaches(const Reach& reach, Day today, Day day) {
  if (reach.days.count() > 0) {
    return today - reach.days <= day;
  }
  const std::chrono::year_month_day date{today};
  const auto month = date.year() / date.month() - kMonthlyReach;
  const auto last = (month / std::chrono::last).day();
  return Day{month / std::min(date.day(), last)} <= day;
}

// Writes nothing if every chart shows something of it.
void writeReach(const DailyBars& bars, Day today, std::ostream& out) {
  const auto* shortest = std::find_if(kReaches.begin(), kReaches.end(), [&](const Reach& reach) {
    return reaches(reach, today, bars.back().date);
  });
  if (shortest == kReaches.end()) {
    out << "No chart reaches back to the newest day, " << tableDate(bars.back().date) << ".\n";
  } else if (shortest != kReaches.begin()) {
    out << "The newest day is too old for a chart shorter than: " << shortest->chart << ".\n";
  }
}

// Returns whether a chart can have any of them.
bool writeBars(DailyBars bars, const std::string& ticker, Day today, std::ostream& out) {
  out << spanText(bars) << ", the newest:\n";
  out << tableText(bars, bars.at(bars.size() - std::min(kShownBars, bars.size())).date);
  cutAfter(bars, today);
  if (bars.empty()) {
    out << "All days lie after today: there is nothing to chart.\n";
    return false;
  }
  writeReach(bars, today, out);
  out << "The quote that a chart gets: " << quoteText(ticker, bars, today);
  return true;
}

// Why there are no bars.
std::string reasonOf(const Found& found, const std::string& ticker) {
  if (const auto* unusable = std::get_if<Unusable>(&found)) {
    return unusable->reason;
  }
  if (const auto* failed = std::get_if<Failed>(&found)) {
    return failed->reason;
  }
  const std::string& reason = std::get<NotFound>(found).reason;
  return "nothing for " + escaped(ticker) + (reason.empty() ? "" : ": " + reason);
}

// A source that the service never asks, because one before it has answered.
void writeHidden(PriceSource& source, const std::string& ticker, Day today, std::ostream& out) {
  const Found found = source.find(ticker, today);
  if (const auto* bars = std::get_if<DailyBars>(&found)) {
    out << "This hides what " << source.name() << " has: " << spanText(*bars) << ".\n";
  } else if (!std::holds_alternative<NotFound>(found)) {
    out << "Not needed: " << source.name() << ": " << reasonOf(found, ticker) << "\n";
  }
}

}  // namespace

bool check(const SourceSettings& settings, const std::string& symbol, Day today,
           std::ostream& out) {
  const std::string ticker = parseTicker(symbol);
  const PriceSources sources = standardSources(settings, {});
  Found answer = NotFound{};
  bool answered = false;
  for (const auto& source : sources) {
    if (answered) {
      writeHidden(*source, ticker, today, out);
      continue;
    }
    out << "Asked " << source->name() << ":\n";
    answer = source->explain(ticker, today, out);
    answered = !std::holds_alternative<NotFound>(answer);
    out << "  "
        << (std::holds_alternative<DailyBars>(answer)
                ? "This is the answer for " + escaped(ticker) + "."
                : reasonOf(answer, ticker))
        << "\n";
  }
  const auto* bars = std::get_if<DailyBars>(&answer);
  if (bars == nullptr) {
    out << "No prices for " << escaped(ticker) << ".\n";
  }
  return bars != nullptr && writeBars(*bars, ticker, today, out);
}

}  // namespace quintara::quotes
