#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace quintara::quotes {

inline std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// A folder of its own for one test.
struct TemporaryFolder {
  TemporaryFolder() : path(::mkdtemp(std::string("/tmp/quotes-XXXXXX").data())) {}
  TemporaryFolder(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(path); }

  void write(const std::string& name, const std::string& text) const {
    std::ofstream(path / name, std::ios::binary) << text;
  }

  const std::filesystem::path path;
};

}  // namespace quintara::quotes
