#include "service/desk/standard_sources.hpp"

#include "service/provider/provider_source.hpp"
#include "service/sources/demo_market.hpp"
#include "service/sources/price_folder.hpp"

namespace quintara::quotes {

PriceSources standardSources(const SourceSettings& settings, const std::stop_token& stop) {
  PriceSources sources;
  if (!settings.prices.empty()) {
    sources.push_back(std::make_unique<PriceFolder>(settings.prices, settings.log, stop));
  }
  if (settings.provider) {
    sources.push_back(std::make_unique<ProviderSource>(*settings.provider, settings.log, stop));
  }
  sources.push_back(std::make_unique<DemoMarket>());
  return sources;
}

}  // namespace quintara::quotes
