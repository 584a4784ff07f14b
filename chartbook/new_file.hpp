#pragma once

#include <csignal>
#include <filesystem>
#include <string>
#include <string_view>

namespace quintara::chartbook {

/// A file that is there whole or not at all: written beside its place and renamed. Signals that end
/// the program wait meanwhile. Every function throws std::system_error that names the file.
class NewFile {
 public:
  /// Makes the folder, too, if need be. Throws std::runtime_error where something else than a file
  /// is.
  explicit NewFile(const std::filesystem::path& path);
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  /// Without commit() nothing is left.
  ~NewFile();

  void write(std::string_view bytes);
  void commit();

 private:
  void flush();
  [[noreturn]] void fail() const;

  const std::filesystem::path path_;
  std::string part_;  ///< the name while it is being written; empty once renamed
  std::string buffer_;
  int file_ = -1;
  sigset_t before_{};
};

}  // namespace quintara::chartbook
