#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "service/prices/price.hpp"

namespace quintara::quotes {

/// What a table of daily prices holds.
struct PriceRows {
  DailyBars bars;
  std::size_t rows = 0;  ///< those used; several of one day make one bar
  std::size_t badLines = 0;
  std::size_t remarks = 0;     ///< lines below the last row that are no rows
  std::size_t cutPrices = 0;   ///< rows with a price of more than ten digits, rounded to ten
  std::size_t cutVolumes = 0;  ///< rows with a volume beyond 64 bits, taken as the largest of them
  std::string problem;         ///< why there are no bars; empty when there are some
  bool readable = false;       ///< there are columns or fields with the right names
  std::vector<std::string> complaints;  ///< of the first bad lines: one line each, escaped

  bool isEmpty() const { return bars.empty() && badLines == 0; }
};

/// Collects rows in any order and makes one bar of each day: the first open, the highest high, the
/// lowest low, the last close and the whole volume by the times of its rows. Of rows without a time
/// the first of a day stands; a row that repeats another one is left out and counted. Where half of
/// the rows contradict others they are of several tickers, and there are no bars.
class BarList {
 public:
  /// `kind` is what a row is called in complaints; `most` rows are expected at most.
  explicit BarList(std::string_view kind, std::size_t most = 0) : kind_(kind) {
    bars_.reserve(most);
    origins_.reserve(most);
  }

  void add(const DailyBar& bar, std::size_t number, int second, bool cutPrice, bool cutVolume);
  /// A row that is left out. One that looks like a `remark` does not count below the last good row.
  void leaveOut(std::size_t number, const std::string& why, bool remark);
  PriceRows finish();

 private:
  struct Origin {
    std::uint32_t number;
    std::int32_t second;
  };
  struct LeftOut {
    std::string complaint;
    bool remark;
  };

  bool isBefore(std::size_t a, std::size_t b) const;
  void sort();
  void dropRepetitions();
  void merge();
  void contradict(std::size_t one, std::size_t other);
  void complain(std::size_t number, const std::string& why);
  void keepPending(bool remarks);

  std::string_view kind_;
  DailyBars bars_;
  std::vector<Origin> origins_;   ///< of each bar
  std::vector<LeftOut> pending_;  ///< the first since the last good row
  std::size_t pendingRows_ = 0;
  std::size_t pendingRemarks_ = 0;
  std::size_t contradictions_ = 0;
  std::string contradiction_;  ///< the first
  PriceRows result_;
};

}  // namespace quintara::quotes
