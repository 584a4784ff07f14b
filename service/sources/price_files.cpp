#include "service/sources/price_files.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <tuple>
#include <utility>

#include "service/prices/region.hpp"
#include "service/system/file_handle.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr auto kEndings = std::to_array<std::string_view>({".csv", ".txt", ".tsv"});

// The place of the name's ending in the list above.
std::size_t endingOf(std::string_view name) {
  const auto isIts = [&](std::string_view ending) {
    return name.size() > ending.size() &&
           equalIgnoringCase(name.substr(name.size() - ending.size()), ending);
  };
  return static_cast<std::size_t>(std::find_if(kEndings.begin(), kEndings.end(), isIts) -
                                  kEndings.begin());
}

// Empty for the name of no price file.
std::string_view withoutEnding(std::string_view name) {
  const std::size_t ending = endingOf(name);
  return ending < kEndings.size() ? name.substr(0, name.size() - kEndings.at(ending).size())
                                  : std::string_view();
}

bool goesBefore(const std::string& one, const std::string& other) {
  return std::tuple(tickerOfFile(one), endingOf(one), one) <
         std::tuple(tickerOfFile(other), endingOf(other), other);
}

}  // namespace

std::string tickerOfFile(std::string_view name) { return upperCase(withoutEnding(name)); }

PriceFile pricesIn(WholeFile&& file, const std::string& ticker) {
  if (!file.problem.empty()) {
    PriceFile none;
    none.problem = file.problem;
    return none;
  }
  RowRules rules;
  rules.ticker = ticker;
  rules.region = regionalDayOrder();
  return parsePriceFile(std::move(file.text), rules);
}

PriceFiles::PriceFiles(const std::filesystem::path& folder)
    : directory_(::opendir(folder.c_str())) {
  if (!directory_ && errno != ENOENT && errno != ENOTDIR) {
    throw std::system_error(errno, std::generic_category());
  }
}

template <class Use>
void PriceFiles::forEachName(const Use& use) const {
  if (!directory_) {
    return;
  }
  ::rewinddir(directory_.get());
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(directory_.get());
    if (entry == nullptr && errno != 0) {
      throw std::system_error(errno, std::generic_category());
    }
    if (entry == nullptr) {
      return;
    }
    use(std::string_view(static_cast<const char*>(entry->d_name)));
  }
}

std::vector<std::string> PriceFiles::names() const {
  std::vector<std::string> names;
  forEachName([&](std::string_view name) {
    if (name.front() != '.' || !withoutEnding(name).empty()) {
      names.emplace_back(name);
    }
  });
  std::sort(names.begin(), names.end(), goesBefore);
  return names;
}

std::vector<std::string> PriceFiles::namesFor(const std::string& ticker) const {
  std::vector<std::string> names;
  forEachName([&](std::string_view name) {
    if (equalIgnoringCase(withoutEnding(name), ticker)) {
      names.emplace_back(name);
    }
  });
  std::sort(names.begin(), names.end(), goesBefore);
  return names;
}

std::size_t PriceFiles::sizeOf(const std::string& name) const {
  struct stat found {};
  return ::fstatat(descriptor(), name.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0
             ? static_cast<std::size_t>(found.st_size)
             : 0;
}

WholeFile PriceFiles::bytesOf(const std::string& name) const {
  // No waiting for the other end of a pipe, and no way out of the folder through a link.
  constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  const FileHandle file(::openat(descriptor(), name.c_str(), kFlags));
  if (!file) {
    return {{}, errno == ELOOP ? "a link, which is not followed" : reasonFor(errno)};
  }
  return wholeFile(file.get(), kLargestPriceFile);
}

}  // namespace quintara::quotes
