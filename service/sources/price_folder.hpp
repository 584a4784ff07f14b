#pragma once

#include <atomic>
#include <filesystem>
#include <stop_token>

#include "service/sources/price_source.hpp"
#include "service/system/log.hpp"
#include "service/system/turns.hpp"

namespace quintara::quotes {

/// The trader's own prices: one file for a ticker in one folder; of several the first is read, and
/// the log names the others. Read anew for every request, so that a changed file counts at once.
class PriceFolder : public PriceSource {
 public:
  /// So many requests may wait for large files, which are read one after the other; the next one
  /// fails at once. Small files wait for no large one.
  static constexpr int kMostLarge = 4;

  /// Once `stop` is requested files are refused instead of read: clients that wait for their turn
  /// with large ones must not hold up the end of the service.
  PriceFolder(std::filesystem::path folder, Log log, std::stop_token stop = {});

  std::string name() const override;
  Found find(const std::string& ticker, Day today) override;
  Found explain(const std::string& ticker, Day today, std::ostream& out) override;

 private:
  template <class See>
  Found ask(const std::string& ticker, const See& see);

  const std::filesystem::path folder_;
  const Log log_;
  const std::stop_token stop_;
  std::atomic<int> waiting_ = 0;  ///< for large files
  Turns large_{1};
  Turns small_{2};  ///< so that there is computing time for whoever connects meanwhile
};

}  // namespace quintara::quotes
