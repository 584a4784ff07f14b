#pragma once

#include <filesystem>
#include <mutex>
#include <stop_token>

#include "service/sources/price_source.hpp"
#include "service/system/log.hpp"

namespace quintara::quotes {

/// The trader's own prices: one file TICKER.csv, TICKER.txt or TICKER.tsv for a ticker, the name in
/// any case, straight in one folder; of several the first in this order is read, and the log names
/// the others. Read anew for every request, so that a changed file counts at once. Only regular
/// files of at most 32 MB are read; links, devices and pipes are not followed or waited for.
class PriceFolder : public PriceSource {
 public:
  /// Once `stop` is requested files are refused instead of read: clients that wait for their turn
  /// with large ones must not hold up the end of the service.
  PriceFolder(std::filesystem::path folder, Log log, std::stop_token stop = {});

  Found find(const std::string& ticker, Day today) override;

 private:
  const std::filesystem::path folder_;
  const Log log_;
  const std::stop_token stop_;
  std::mutex reading_;  ///< one file in memory at a time, however many clients ask
};

}  // namespace quintara::quotes
