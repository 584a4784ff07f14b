#include "service/prices/bar_list.hpp"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace quintara::quotes {
namespace {

constexpr std::size_t kComplaints = 100;

bool haveOtherPrices(const DailyBar& one, const DailyBar& other) {
  return std::tie(one.open, one.high, one.low, one.close) !=
         std::tie(other.open, other.high, other.low, other.close);
}

// Trades of one second have one price each, and bars of one second overlap.
bool areOfTwoMarkets(const DailyBar& one, const DailyBar& other) {
  const bool trades = one.high == one.low || other.high == other.low;
  return !trades && (one.high < other.low || other.high < one.low);
}

void join(DailyBar& day, const DailyBar& later) {
  day.high = std::max(day.high, later.high);
  day.low = std::min(day.low, later.low);
  day.close = later.close;
  day.volume = sumOfVolumes(day.volume, later.volume);
}

}  // namespace

void BarList::add(const DailyBar& bar, std::size_t number, int second, bool cutPrice,
                  bool cutVolume) {
  keepPending(!bars_.empty());
  bars_.push_back(bar);
  origins_.push_back({static_cast<std::uint32_t>(number), second});
  result_.cutPrices += cutPrice ? 1 : 0;
  result_.cutVolumes += cutVolume ? 1 : 0;
}

void BarList::leaveOut(std::size_t number, const std::string& why, bool remark) {
  (remark ? pendingRemarks_ : pendingRows_) += 1;
  if (pending_.size() + result_.complaints.size() < kComplaints) {
    pending_.push_back({std::string(kind_) + " " + std::to_string(number) + ": " + why, remark});
  }
}

// Takes what was left out since the last good row for bad rows, and remarks only if told so.
void BarList::keepPending(bool remarks) {
  if (pendingRows_ + pendingRemarks_ == 0) {
    return;
  }
  result_.badLines += pendingRows_ + (remarks ? pendingRemarks_ : 0);
  for (LeftOut& left : pending_) {
    if (remarks || !left.remark) {
      result_.complaints.push_back(std::move(left.complaint));
    }
  }
  result_.remarks += remarks ? 0 : pendingRemarks_;
  pending_.clear();
  pendingRows_ = 0;
  pendingRemarks_ = 0;
}

void BarList::complain(std::size_t number, const std::string& why) {
  ++result_.badLines;
  if (result_.complaints.size() < kComplaints) {
    result_.complaints.push_back(std::string(kind_) + " " + std::to_string(number) + ": " + why);
  }
}

bool BarList::isBefore(std::size_t a, std::size_t b) const {
  return std::tie(bars_[a].date, origins_[a].second) < std::tie(bars_[b].date, origins_[b].second);
}

// Exports come in either order.
void BarList::sort() {
  std::size_t rising = 0;
  std::size_t falling = 0;
  for (std::size_t i = 1; i < bars_.size(); ++i) {
    rising += isBefore(i, i - 1) ? 0 : 1;
    falling += isBefore(i - 1, i) ? 0 : 1;
  }
  if (rising + 1 == bars_.size()) {
    return;
  }
  if (falling + 1 == bars_.size()) {
    std::reverse(bars_.begin(), bars_.end());
    std::reverse(origins_.begin(), origins_.end());
    return;
  }
  std::vector<std::uint32_t> order(bars_.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(), [this](auto a, auto b) { return isBefore(a, b); });
  // Each circle of places is moved on by itself: a copy of all would take as much memory again.
  for (std::uint32_t first = 0; first < order.size(); ++first) {
    const DailyBar bar = bars_[first];
    const Origin origin = origins_[first];
    std::uint32_t place = first;
    while (order[place] != first) {
      const auto from = std::exchange(order[place], place);
      bars_[place] = bars_[from];
      origins_[place] = origins_[from];
      place = from;
    }
    bars_[place] = bar;
    origins_[place] = origin;
    order[place] = place;
  }
}

// Where every row has the same time the time says nothing, and of two rows of a day the first in
// the table stands. Otherwise trades of one second may differ, and only a row that says the same as
// the one before it is a repetition.
void BarList::dropRepetitions() {
  const bool timed = std::any_of(origins_.begin(), origins_.end(), [this](const Origin& origin) {
    return origin.second != origins_.front().second;
  });
  std::size_t kept = 0;
  for (std::size_t i = 0; i < bars_.size(); ++i) {
    const bool again = kept > 0 && !isBefore(kept - 1, i);
    const bool moment = timed && origins_[i].second != 0;
    if (again && (moment ? areOfTwoMarkets : haveOtherPrices)(bars_[i], bars_[kept - 1])) {
      contradict(origins_[kept - 1].number, origins_[i].number);
    }
    if (!again || (moment && bars_[i] != bars_[kept - 1])) {
      bars_[kept] = bars_[i];
      origins_[kept++] = origins_[i];
      continue;
    }
    const auto first = std::min(origins_[i].number, origins_[kept - 1].number);
    complain(std::max(origins_[i].number, origins_[kept - 1].number),
             "the date " + tableDate(bars_[i].date) + " is there already");
    if (origins_[kept - 1].number != first) {
      bars_[kept - 1] = bars_[i];
      origins_[kept - 1] = origins_[i];
    }
  }
  bars_.resize(kept);
  if (contradictions_ >= 2 && 2 * contradictions_ >= kept) {
    bars_.clear();
  }
}

void BarList::contradict(std::size_t one, std::size_t other) {
  if (++contradictions_ == 1) {
    contradiction_ = std::string(kind_) + " " + std::to_string(std::max(one, other)) +
                     ": other prices than " + std::string(kind_) + " " +
                     std::to_string(std::min(one, other)) +
                     " at the same time, and so in many more: keep the rows of one ticker, or add "
                     "the time of day";
  }
}

void BarList::merge() {
  std::size_t days = 0;
  for (const DailyBar& bar : bars_) {
    if (days > 0 && bars_[days - 1].date == bar.date) {
      join(bars_[days - 1], bar);
    } else {
      bars_[days++] = bar;
    }
  }
  result_.rows = bars_.size();
  bars_.resize(days);
}

PriceRows BarList::finish() {
  keepPending(bars_.empty());
  sort();
  dropRepetitions();
  merge();
  result_.readable = true;
  result_.bars = std::move(bars_);
  if (result_.bars.empty()) {
    const std::string bad =
        "no usable " + std::string(kind_) + ", " + std::to_string(result_.badLines) + " bad ones";
    result_.problem = !contradiction_.empty()      ? contradiction_
                      : result_.complaints.empty() ? "no rows"
                                                   : bad + ", " + result_.complaints.front();
  }
  return std::move(result_);
}

}  // namespace quintara::quotes
