#include "chartbook/studio.hpp"

#include "chartbook/captions.hpp"
#include "chartbook/new_file.hpp"
#include "chartbook/png.hpp"
#include "service/desk/user_settings.hpp"

namespace quintara::chartbook {
namespace {

quotes::PriceSources sourcesOf(const Options& options) {
  quotes::SourceSettings settings{.prices = options.prices,
                                  .log = quotes::Log(quotes::LogLevel::Error)};
  quotes::readProvider(options.provider, options.providerNamed, settings);
  return quotes::standardSources(settings, {});
}

}  // namespace

Studio::Studio(const Options& options)
    : options_(options),
      today_(quotes::localToday()),
      glyphs_(options.size.scale),
      desk_(sourcesOf(options), [this] { return today_; }),
      client_(desk_) {}

Report Studio::draw(const Order& order, const std::filesystem::path& picture) {
  Session session(glyphs_, client_, today_, options_.size);
  session.draw(order);
  if (options_.labels) {
    labelLevels(session, glyphs_);
  }
  nameChart(session, order.fields.at(kTicker) + " " + session.chosen("cboInterval"));
  Report report = reportOf(session, order);
  report.picture = picture.filename().string();
  report.width = options_.size.width;
  report.height = options_.size.height;
  NewFile file(picture);
  file.write(pngOf(session.chart().raster()));
  file.commit();
  return report;
}

}  // namespace quintara::chartbook
