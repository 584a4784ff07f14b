#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <future>
#include <map>
#include <mutex>
#include <stop_token>
#include <string>

#include "service/provider/provider.hpp"
#include "service/system/log.hpp"

namespace quintara::quotes {

/// The provider with a short memory, because one chart takes two requests and providers count them.
/// Of several requests for one ticker at the same time one asks the provider, and the others wait
/// for its answer. Failures are remembered for a few seconds only.
class ProviderSource : public PriceSource {
 public:
  /// So many requests may wait at the same time, and no longer than the provider's time limit; the
  /// next one fails at once.
  static constexpr int kMostAtOnce = 16;

  ProviderSource(ProviderSettings settings, Log log, std::stop_token stop = {});

  std::string name() const override;
  Found find(const std::string& ticker, Day today) override;
  Found explain(const std::string& ticker, Day today, std::ostream& out) override;

 private:
  using Clock = std::chrono::steady_clock;
  struct Entry {
    std::shared_future<Found> found;
    Day today;
    Clock::time_point until;  ///< the latest while the answer is awaited
    std::size_t number;       ///< of the request, to know the same entry again
  };

  Found ask(const std::string& ticker, Day today, Clock::time_point deadline);
  Found failed(const std::string& reason) const;
  void report(const std::string& ticker, const ProviderReply& reply) const;
  void makeRoom();

  const Provider provider_;
  const Log log_;
  std::atomic<int> waiting_ = 0;
  std::mutex mutex_;  ///< of all below
  std::condition_variable freed_;
  int transfers_ = 0;
  std::map<std::string, Entry> entries_;
  std::size_t asked_ = 0;
};

}  // namespace quintara::quotes
