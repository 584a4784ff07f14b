#pragma once

#include "values/text.hpp"

namespace quintara::test {

/// Sets the user's separator for one test.
struct ScopedSeparator {
  explicit ScopedSeparator(const std::string& decimal) { sDecimalSep = decimal; }
  ~ScopedSeparator() { sDecimalSep = ""; }
};

}  // namespace quintara::test
