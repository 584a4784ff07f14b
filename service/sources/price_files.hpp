#pragma once

#include <dirent.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "service/prices/price_file.hpp"
#include "service/system/whole_file.hpp"

namespace quintara::quotes {

/// The ticker, in upper case, that a file of this name holds: what stands before .csv, .txt or .tsv
/// in any case. Empty for other names.
std::string tickerOfFile(std::string_view name);

inline constexpr std::size_t kLargestPriceFile = 32 * std::size_t{1024} * 1024;

/// The prices of a ticker in a file. `problem` also says why the file could not be had.
PriceFile pricesIn(WholeFile&& file, const std::string& ticker);

/// A folder of price files. Only regular files straight in it count; links, devices and pipes are
/// not followed or waited for.
class PriceFiles {
 public:
  /// Throws std::system_error if the folder is there but cannot be read.
  explicit PriceFiles(const std::filesystem::path& folder);

  bool areThere() const { return directory_ != nullptr; }
  int descriptor() const { return ::dirfd(directory_.get()); }

  /// Every name but hidden ones that are none of price files. The names of one ticker stand
  /// together, the one that counts first. Throws std::system_error.
  std::vector<std::string> names() const;
  /// Those of one ticker, by their endings in the order above and by their bytes, so that which one
  /// counts does not depend on the order of the directory. Throws std::system_error.
  std::vector<std::string> namesFor(const std::string& ticker) const;

  /// In bytes; 0 if it is not there.
  std::size_t sizeOf(const std::string& name) const;
  WholeFile bytesOf(const std::string& name) const;

 private:
  struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
  };

  template <class Use>
  void forEachName(const Use& use) const;

  std::unique_ptr<DIR, CloseDirectory> directory_;
};

}  // namespace quintara::quotes
