#include "chartbook/reports.hpp"

#include <algorithm>
#include <cerrno>
#include <numeric>
#include <system_error>

namespace quintara::chartbook {
namespace {

[[noreturn]] void fail() {
  throw std::system_error(errno, std::generic_category(), "a temporary file");
}

}  // namespace

Reports::Reports(std::size_t count) : file_(std::tmpfile()), places_(count) {
  if (!file_) {
    fail();
  }
}

void Reports::put(std::size_t piece, const std::string& packed) {
  if (std::fseek(file_.get(), 0, SEEK_END) != 0) {
    fail();
  }
  const Report report = unpacked(packed);
  // Behind all that have no levels.
  constexpr double kFailed = 1e300;
  places_.at(piece) = {std::ftell(file_.get()), packed.size(),
                       report.failure.empty() ? std::min(report.nearest(), kFailed / 2) : kFailed};
  if (std::fwrite(packed.data(), 1, packed.size(), file_.get()) != packed.size()) {
    fail();
  }
}

Report Reports::at(std::size_t piece) const {
  const Place& place = places_.at(piece);
  std::string packed(place.length, '\0');
  if (std::fseek(file_.get(), place.start, SEEK_SET) != 0 ||
      std::fread(packed.data(), 1, packed.size(), file_.get()) != packed.size()) {
    fail();
  }
  return unpacked(packed);
}

std::vector<std::size_t> Reports::nearestFirst() const {
  std::vector<std::size_t> order(places_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
    return places_[a].nearest < places_[b].nearest;
  });
  return order;
}

}  // namespace quintara::chartbook
