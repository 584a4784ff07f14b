#include "service/sources/price_folder.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "service/prices/price_file.hpp"
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

// The entry with this name in any case. Where several differ in case alone the first in byte order
// is taken, so that the choice does not depend on the order of the directory. Throws
// std::system_error.
std::optional<std::string> entryNamed(DIR* directory, const std::string& name) {
  std::optional<std::string> best;
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(directory);
    if (entry == nullptr && errno != 0) {
      throw std::system_error(errno, std::generic_category());
    }
    if (entry == nullptr) {
      return best;
    }
    const std::string_view found = static_cast<const char*>(entry->d_name);
    if (equalIgnoringCase(found, name) && (!best || found < *best)) {
      best = found;
    }
  }
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
  const auto name = directory ? entryNamed(directory.get(), ticker + ".CSV") : std::nullopt;
  if (!name) {
    return NotFound{};
  }
  const std::lock_guard lock(reading_);
  if (stop_.stop_requested()) {
    return Unusable{"the service is stopping"};
  }
  const Content content = readEntry(::dirfd(directory.get()), *name);
  const std::string where = "own prices in " + escaped(*name) + ": ";
  if (!content.problem.empty()) {
    return unusable(where + content.problem);
  }
  PriceFile file = parsePriceFile(content.text);
  if (!file.problem.empty()) {
    return unusable(where + file.problem);
  }
  if (file.badLines > 0) {
    log_.warning(escaped(*name) + ": bad lines left out: " + std::to_string(file.badLines));
  }
  return std::move(file.bars);
}

}  // namespace quintara::quotes
