#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "chartbook/report.hpp"

namespace quintara::chartbook {

/// What came of a list's orders, kept in a temporary file so that ten thousand take no more memory
/// than ten. Throws std::system_error when there is no room for it.
class Reports {
 public:
  explicit Reports(std::size_t count);

  /// Keeps a packed report.
  void put(std::size_t piece, const std::string& packed);
  [[nodiscard]] Report at(std::size_t piece) const;
  [[nodiscard]] std::size_t size() const { return places_.size(); }

  /// All of them, those first whose close is nearest to a level; those that failed at the end.
  [[nodiscard]] std::vector<std::size_t> nearestFirst() const;

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  struct Place {
    long start = 0;
    std::size_t length = 0;
    double nearest = 0;
  };

  std::unique_ptr<std::FILE, Close> file_;
  std::vector<Place> places_;
};

}  // namespace quintara::chartbook
