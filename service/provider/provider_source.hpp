#pragma once

#include <chrono>
#include <future>
#include <map>
#include <mutex>
#include <semaphore>
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
  ProviderSource(ProviderSettings settings, Log log, std::stop_token stop = {});

  Found find(const std::string& ticker, Day today) override;

 private:
  using Clock = std::chrono::steady_clock;
  struct Entry {
    std::shared_future<Found> found;
    Day today;
    Clock::time_point until;  ///< the latest while the answer is awaited
    std::size_t number;       ///< of the request, to know the same entry again
  };

  Found ask(const std::string& ticker, Day today);
  void report(const std::string& ticker, const ProviderReply& reply) const;
  void makeRoom();

  const Provider provider_;
  const Log log_;
  std::counting_semaphore<> transfers_;
  std::mutex mutex_;  ///< of the two below
  std::map<std::string, Entry> entries_;
  std::size_t asked_ = 0;
};

}  // namespace quintara::quotes
