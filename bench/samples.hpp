#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace quintara::bench {

/// Prints `what,size,median,p10` of the samples.
inline void printLine(const char* what, const std::string& size, std::vector<double> samples) {
  std::sort(samples.begin(), samples.end());
  const auto at = [&](double share) {
    return samples[static_cast<std::size_t>(share * static_cast<double>(samples.size() - 1))];
  };
  std::printf("%s,%s,%.2f,%.2f\n", what, size.c_str(), at(0.5), at(0.1));
  std::fflush(stdout);
}

}  // namespace quintara::bench
