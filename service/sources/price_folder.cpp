#include "service/sources/price_folder.hpp"

#include <optional>
#include <ostream>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

#include "service/prices/report.hpp"
#include "service/sources/price_files.hpp"
#include "service/system/counted.hpp"
#include "service/system/whole_file.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kLargestSmall = std::size_t{1} << 20;  // bytes, a century of days

Found foundIn(const std::string& name, PriceFile&& file) {
  return file.problem.empty()
             ? Found(std::move(file.bars))
             : Found(Unusable{"own prices in " + escaped(name) + ": " + file.problem});
}

}  // namespace

PriceFolder::PriceFolder(std::filesystem::path folder, Log log, std::stop_token stop)
    : folder_(std::move(folder)), log_(std::move(log)), stop_(std::move(stop)) {}

std::string PriceFolder::name() const { return "own prices in " + escaped(folder_.string()); }

// `see` is shown the names of the ticker's files and what the first one holds.
template <class See>
Found PriceFolder::ask(const std::string& ticker, const See& see) {
  try {
    const PriceFiles files(folder_);
    const auto names = files.namesFor(ticker);
    if (names.empty()) {
      return NotFound{};
    }
    std::optional<Counted> request;
    const bool large = files.sizeOf(names.front()) > kLargestSmall;
    if (large && request.emplace(waiting_).number > kMostLarge) {
      return Failed{"own prices: too many requests wait for large files already"};
    }
    const std::lock_guard turn(large ? large_ : small_);
    if (stop_.stop_requested()) {
      return Unusable{"the service is stopping"};
    }
    PriceFile file = pricesIn(files.bytesOf(names.front()), ticker);
    see(names, file);
    return foundIn(names.front(), std::move(file));
  } catch (const std::system_error& error) {
    return Unusable{"own prices cannot be read: " + error.code().message()};
  }
}

Found PriceFolder::find(const std::string& ticker, Day) {
  Found found = ask(ticker, [this](const auto& names, const PriceFile& file) {
    const std::string name = escaped(names.front());
    for (const std::string& other : std::span(names).subspan(1)) {
      log_.warning("own prices: " + escaped(other) + " is not read, because there is " + name);
    }
    if (file.problem.empty() && file.badLines > 0) {
      log_.warning(name + ": bad lines left out: " + std::to_string(file.badLines));
    }
  });
  if (const auto* failed = std::get_if<Failed>(&found)) {
    log_.warning(failed->reason);
  }
  const auto* unusable = std::get_if<Unusable>(&found);
  if (unusable != nullptr && !stop_.stop_requested()) {
    log_.warning(unusable->reason);
  }
  return found;
}

Found PriceFolder::explain(const std::string& ticker, Day, std::ostream& out) {
  return ask(ticker, [&out](const auto& names, const PriceFile& file) {
    out << "  File: " << escaped(names.front()) << "\n";
    for (const std::string& other : std::span(names).subspan(1)) {
      out << "  Not read beside it: " << escaped(other) << "\n";
    }
    report(file, out);
  });
}

}  // namespace quintara::quotes
