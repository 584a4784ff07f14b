#include "service/sources/price_folder.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include "service/prices/price_file.hpp"
#include "service/prices/region.hpp"
#include "service/system/file_handle.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kLargestFile = 32 * std::size_t{1024} * 1024;

std::string reasonFor(int error) { return std::generic_category().message(error); }

struct CloseDirectory {
  void operator()(DIR* directory) const { ::closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

// The endings of price files, the first before the others.
constexpr std::array kEndings{".CSV", ".TXT", ".TSV"};

// The files of this ticker in any case, in the order of endings and then of bytes, so that the
// choice does not depend on the order of the directory. Throws std::system_error.
std::vector<std::string> entriesOf(DIR* directory, const std::string& ticker) {
  std::array<std::vector<std::string>, kEndings.size()> found;
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(directory);
    if (entry == nullptr && errno != 0) {
      throw std::system_error(errno, std::generic_category());
    }
    if (entry == nullptr) {
      break;
    }
    const std::string_view name = static_cast<const char*>(entry->d_name);
    for (std::size_t i = 0; i < kEndings.size(); ++i) {
      if (equalIgnoringCase(name, ticker + kEndings.at(i))) {
        found.at(i).emplace_back(name);
      }
    }
  }
  std::vector<std::string> names;
  for (auto& ending : found) {
    std::sort(ending.begin(), ending.end());
    names.insert(names.end(), ending.begin(), ending.end());
  }
  return names;
}

bool unchanged(const struct stat& before, const struct stat& after) {
  return before.st_size == after.st_size && before.st_mtim.tv_sec == after.st_mtim.tv_sec &&
         before.st_mtim.tv_nsec == after.st_mtim.tv_nsec;
}

struct Content {
  std::string text;
  std::string problem;  // why there is no text
};

// Reads the file behind one descriptor. A file that changes meanwhile would be a mix of old and new
// lines, so it is not used.
Content contentOf(int file) {
  struct stat before {};
  if (::fstat(file, &before) != 0 || !S_ISREG(before.st_mode)) {
    return {{}, "not a regular file"};
  }
  if (static_cast<std::size_t>(before.st_size) > kLargestFile) {
    return {{}, "larger than 32 MB"};
  }
  Content content;
  content.text.resize(static_cast<std::size_t>(before.st_size));
  std::size_t length = 0;
  while (length < content.text.size()) {
    const auto got = ::pread(file, content.text.data() + length, content.text.size() - length,
                             static_cast<off_t>(length));
    if (got < 0 && errno != EINTR) {
      return {{}, reasonFor(errno)};
    }
    if (got == 0) {
      break;
    }
    length += got > 0 ? static_cast<std::size_t>(got) : 0;
  }
  struct stat after {};
  if (::fstat(file, &after) != 0 || !unchanged(before, after) || length < content.text.size()) {
    return {{}, "being written just now"};
  }
  return content;
}

Content readEntry(int directory, const std::string& name) {
  // No waiting for the other end of a pipe, and no way out of the folder through a link.
  constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  const FileHandle file(::openat(directory, name.c_str(), kFlags));
  if (!file) {
    return {{}, errno == ELOOP ? "a link, which is not followed" : reasonFor(errno)};
  }
  return contentOf(file.get());
}

}  // namespace

PriceFolder::PriceFolder(std::filesystem::path folder, Log log, std::stop_token stop)
    : folder_(std::move(folder)), log_(std::move(log)), stop_(std::move(stop)) {}

Found PriceFolder::find(const std::string& ticker, Day) {
  const auto unusable = [this](const std::string& reason) {
    log_.warning(reason);
    return Unusable{reason};
  };
  const Directory directory(::opendir(folder_.c_str()));
  if (!directory && errno != ENOENT && errno != ENOTDIR) {
    return unusable("own prices cannot be read: " + reasonFor(errno));
  }
  const auto names = directory ? entriesOf(directory.get(), ticker) : std::vector<std::string>();
  if (names.empty()) {
    return NotFound{};
  }
  const std::string& name = names.front();
  for (std::size_t i = 1; i < names.size(); ++i) {
    log_.warning("own prices: " + escaped(names[i]) + " is not read, because there is " +
                 escaped(name));
  }
  const std::lock_guard lock(reading_);
  if (stop_.stop_requested()) {
    return Unusable{"the service is stopping"};
  }
  Content content = readEntry(::dirfd(directory.get()), name);
  const std::string where = "own prices in " + escaped(name) + ": ";
  if (!content.problem.empty()) {
    return unusable(where + content.problem);
  }
  RowRules rules;
  rules.ticker = ticker;
  rules.region = regionalDayOrder();
  PriceFile file = parsePriceFile(std::move(content.text), rules);
  if (!file.problem.empty()) {
    return unusable(where + file.problem);
  }
  if (file.badLines > 0) {
    log_.warning(escaped(name) + ": bad lines left out: " + std::to_string(file.badLines));
  }
  return std::move(file.bars);
}

}  // namespace quintara::quotes
