#include "service/system/whole_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>
#include <system_error>

#include "service/system/file_handle.hpp"

namespace quintara::quotes {
namespace {

bool unchanged(const struct stat& before, const struct stat& after) {
  return before.st_size == after.st_size && before.st_mtim.tv_sec == after.st_mtim.tv_sec &&
         before.st_mtim.tv_nsec == after.st_mtim.tv_nsec;
}

bool writeAll(int file, std::string_view text) {
  while (!text.empty()) {
    const auto written = TEMP_FAILURE_RETRY(::write(file, text.data(), text.size()));
    if (written < 0) {
      return false;
    }
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return ::fsync(file) == 0;
}

}  // namespace

std::string reasonFor(int error) { return std::generic_category().message(error); }

WholeFile wholeFile(int descriptor, std::size_t largest) {
  struct stat before {};
  if (::fstat(descriptor, &before) != 0 || !S_ISREG(before.st_mode)) {
    return {{}, "not a regular file"};
  }
  if (static_cast<std::size_t>(before.st_size) > largest) {
    return {{}, "larger than " + std::to_string(largest / 1024 / 1024) + " MB"};
  }
  WholeFile file;
  file.text.resize(static_cast<std::size_t>(before.st_size));
  std::size_t length = 0;
  while (length < file.text.size()) {
    const auto got =
        TEMP_FAILURE_RETRY(::pread(descriptor, file.text.data() + length, file.text.size() - length,
                                   static_cast<off_t>(length)));
    if (got < 0) {
      return {{}, reasonFor(errno)};
    }
    if (got == 0) {
      break;
    }
    length += static_cast<std::size_t>(got);
  }
  struct stat after {};
  if (::fstat(descriptor, &after) != 0 || !unchanged(before, after) || length < file.text.size()) {
    return {{}, "being written just now"};
  }
  return file;
}

std::string putFile(int folder, const std::string& name, const std::string& text) {
  const std::string aside = ".new-" + std::to_string(::getpid());
  constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC;
  const FileHandle file(::openat(folder, aside.c_str(), kFlags, 0666));
  if (file && writeAll(file.get(), text) &&
      ::renameat(folder, aside.c_str(), folder, name.c_str()) == 0) {
    ::fsync(folder);
    return {};
  }
  std::string reason = reasonFor(errno);
  ::unlinkat(folder, aside.c_str(), 0);
  return reason;
}

}  // namespace quintara::quotes
