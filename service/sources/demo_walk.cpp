#include "service/sources/demo_walk.hpp"

#include <algorithm>
#include <cstdlib>

namespace quintara::quotes {
namespace {

constexpr std::int64_t kWeekdaysPerYear = 261;
constexpr std::int64_t kMillion = 1'000'000;

// What each number drawn for a day is for; numbers for different purposes are independent.
enum Purpose : std::uint64_t { kMove, kMood, kGap, kJump, kUpperWick, kLowerWick, kTurnover };

// A well mixed number for each input (the finaliser of SplitMix64).
std::uint64_t mixed(std::uint64_t value) {
  value += 0x9e3779b97f4a7c15U;
  value = (value ^ (value >> 30U)) * 0xbf58476d1ce4e5b9U;
  value = (value ^ (value >> 27U)) * 0x94d049bb133111ebU;
  return value ^ (value >> 31U);
}

// The exponential function of millionths, by its series in fixed point with 30 binary places.
Price priceAt(std::int64_t logPrice) {
  constexpr std::int64_t kLogOfTwo = 693'147;
  constexpr std::int64_t kOne = std::int64_t{1} << 30;
  const std::int64_t doublings = logPrice / kLogOfTwo;
  const std::int64_t x = (logPrice % kLogOfTwo) * kOne / kMillion;
  std::int64_t sum = kOne;
  for (std::int64_t term = 10; term > 0; --term) {
    sum = kOne + sum * x / kOne / term;
  }
  const std::int64_t exact = (sum << doublings) / kOne;  // in ten-thousandths
  constexpr std::int64_t kWhole = 10'000;
  return exact < kWhole ? Price(exact, 4) : Price((exact + 50) / 100, 2);  // from 1 on in cents
}

// A smooth wave from -height to height: two parabolas, near enough to a sine.
std::int64_t wave(std::int64_t day, std::int64_t period, std::int64_t height) {
  const std::int64_t x = day % period * 4000 / period - 2000;  // -2000 to 1999
  return x * (2000 - std::abs(x)) * height / kMillion;
}

}  // namespace

DemoWalk::DemoWalk(const Character& character) : character_(character), logClose_(logClose()) {}

// Between -size and size, small values more often.
std::int64_t DemoWalk::chance(std::int64_t size, std::uint64_t purpose) const {
  const auto bits = mixed(character_.seed ^ mixed(static_cast<std::uint64_t>(day_) * 16 + purpose));
  const auto one = static_cast<std::int64_t>(bits & 0xffffU);
  const auto two = static_cast<std::int64_t>((bits >> 16U) & 0xffffU);
  return (one - two) * size / 0xffff;
}

std::int64_t DemoWalk::logClose() const {
  const auto& c = character_;
  return c.start + c.trendPerYear * day_ / kWeekdaysPerYear + wave(day_, c.swingDays, c.swing) +
         wave(day_, c.swingDays * 3 / 8, c.swing * 2 / 5) + wander_;
}

void DemoWalk::skip() {
  constexpr std::int64_t kMoodDays = 12;
  constexpr std::int64_t kPull = 40;  // days after which a third of chance is left, roughly
  const auto mood = mixed(character_.seed + static_cast<std::uint64_t>(day_ / kMoodDays)) % 101;
  const std::int64_t loudness = 50 + static_cast<std::int64_t>(mood);
  const std::int64_t move = chance(character_.shock, kMove) * loudness / 100;
  wander_ -= wander_ / kPull;
  wander_ += std::abs(wander_ + move) > character_.bound ? -move : move;
  ++day_;
  logClose_ = logClose();
}

DailyBar DemoWalk::next() {
  const std::int64_t before = logClose_;
  skip();
  const std::int64_t shock = character_.shock;
  std::int64_t gap = chance(shock / 4, kGap);
  if (std::abs(chance(100, kJump)) > 80) {
    gap *= 6;  // news overnight
  }
  const std::int64_t open = before + gap;
  const std::int64_t top = std::max(open, logClose_) + std::abs(chance(shock, kUpperWick));
  const std::int64_t bottom = std::min(open, logClose_) - std::abs(chance(shock, kLowerWick));
  const std::int64_t activity = kMillion + chance(kMillion / 2, kTurnover) + (top - bottom) * 20;
  DailyBar bar;
  bar.open = priceAt(open);
  bar.high = priceAt(top);
  bar.low = priceAt(bottom);
  bar.close = priceAt(logClose_);
  bar.volume = character_.volume * activity / kMillion / 100 * 100;
  return bar;
}

}  // namespace quintara::quotes
