#include "chartbook/studio.hpp"

#include "chartbook/captions.hpp"
#include "chartbook/new_file.hpp"
#include "chartbook/png.hpp"
#include "service/desk/user_settings.hpp"

namespace quintara::chartbook {
namespace {

quotes::SourceSettings settingsOf(const Options& options) {
  // What its log would say is the reason of the charts that come to nothing.
  quotes::SourceSettings settings{.prices = options.prices, .log = quotes::Log::none()};
  quotes::readProvider(options.provider, options.providerNamed, settings);
  if (options.providerNamed && !settings.providerProblem.empty()) {
    throw BadFlag("--provider: " + settings.providerProblem);
  }
  return settings;
}

}  // namespace

Studio::Studio(const Options& options) : Studio(options, settingsOf(options)) {}

Studio::Studio(const Options& options, const quotes::SourceSettings& settings)
    : options_(options),
      today_(quotes::localToday()),
      glyphs_(options.size.scale),
      desk_(
          quotes::standardSources(settings, {}), [this] { return today_; },
          [this](const std::string& why) { client_.note(why); }),
      client_(desk_, quotes::withoutProvider(settings, options.provider)) {}

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
