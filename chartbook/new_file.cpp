#include "chartbook/new_file.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace quintara::chartbook {

namespace {

/// Renaming would put a file in the place of whatever is there: a link keeps leading to its file,
/// and devices stay.
std::filesystem::path placeOf(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::path place =
      std::filesystem::is_symlink(path, error) ? std::filesystem::weakly_canonical(path) : path;
  if (std::filesystem::exists(place, error) && !std::filesystem::is_regular_file(place, error)) {
    throw std::runtime_error(path.string() + " is no file");
  }
  return place;
}

}  // namespace

NewFile::NewFile(const std::filesystem::path& path) : path_(placeOf(path)) {
  if (path_.has_parent_path()) {
    std::filesystem::create_directories(path_.parent_path());
  }
  part_ = (path_.parent_path() /
           ("." + path_.filename().string() + "." + std::to_string(::getpid()) + ".part"))
              .string();
  sigset_t ending;
  sigemptyset(&ending);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    sigaddset(&ending, signal);
  }
  sigprocmask(SIG_BLOCK, &ending, &before_);
  constexpr mode_t kAsTheUserWants = 0666;  // less the mask
  file_ = ::open(part_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kAsTheUserWants);
  if (file_ < 0) {
    const int error = errno;
    sigprocmask(SIG_SETMASK, &before_, nullptr);
    errno = error;
    fail();
  }
}

NewFile::~NewFile() {
  if (file_ >= 0) {
    ::close(file_);
  }
  if (!part_.empty()) {
    ::unlink(part_.c_str());
  }
  sigprocmask(SIG_SETMASK, &before_, nullptr);
}

void NewFile::fail() const {
  throw std::system_error(errno, std::generic_category(), path_.string());
}

void NewFile::write(std::string_view bytes) {
  constexpr std::size_t kEnough = std::size_t{1} << 16U;
  buffer_ += bytes;
  if (buffer_.size() >= kEnough) {
    flush();
  }
}

void NewFile::flush() {
  std::string_view rest = buffer_;
  while (!rest.empty()) {
    const ssize_t written = ::write(file_, rest.data(), rest.size());
    if (written < 0 && errno != EINTR) {
      fail();
    }
    rest.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
  }
  buffer_.clear();
}

void NewFile::commit() {
  flush();
  if (::close(std::exchange(file_, -1)) != 0 || ::rename(part_.c_str(), path_.c_str()) != 0) {
    fail();
  }
  part_.clear();
}

}  // namespace quintara::chartbook
