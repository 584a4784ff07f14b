#include "service/desk/standard_sources.hpp"

#include "service/provider/provider_source.hpp"
#include "service/sources/demo_market.hpp"
#include "service/sources/price_folder.hpp"

namespace quintara::quotes {
namespace {

// In place of a provider that cannot be asked: it might have known the ticker.
class UnusableProvider : public PriceSource {
 public:
  explicit UnusableProvider(const std::string& problem)
      : reason_("the settings of the provider cannot be used: " + problem) {}

  std::string name() const override { return "the provider"; }
  Found find(const std::string&, Day) override { return Failed{reason_}; }

 private:
  const std::string reason_;
};

}  // namespace

PriceSources standardSources(const SourceSettings& settings, const std::stop_token& stop) {
  PriceSources sources;
  if (!settings.prices.empty()) {
    sources.push_back(std::make_unique<PriceFolder>(settings.prices, settings.log, stop));
  }
  if (settings.provider) {
    sources.push_back(std::make_unique<ProviderSource>(*settings.provider, settings.log, stop));
  }
  sources.push_back(std::make_unique<DemoMarket>());
  if (!settings.providerProblem.empty()) {
    settings.log.notice("provider", settings.providerProblem);
    sources.push_back(std::make_unique<UnusableProvider>(settings.providerProblem));
  }
  return sources;
}

}  // namespace quintara::quotes
