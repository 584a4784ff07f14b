#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "csv.hpp"
#include "samples.hpp"

namespace quintara::bench {

namespace {

struct Run {
  double microseconds = 0;
  double kilobytes = 0;
};

/// Starts a program that tells when it has painted its window, and how much memory it holds then.
Run start(const std::string& program) {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  setenv("QUINTARA_STARTED", std::to_string(now.count()).c_str(), 1);
  Run run;
  FILE* const output = popen(("exec " + program).c_str(), "r");
  if (output == nullptr || std::fscanf(output, "%lf %lf", &run.microseconds, &run.kilobytes) != 2) {
    std::fprintf(stderr, "%s told nothing\n", program.c_str());
  }
  if (output != nullptr) pclose(output);
  return run;
}

}  // namespace

void printStart(const char* folder, bool quick) {
  constexpr std::array kKinds{"full", "empty"};
  std::array<std::vector<double>, 2> times;
  std::array<std::vector<double>, 2> memory;
  for (int i = 0; i < (quick ? 2 : 40); ++i) {
    for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
      const Run run = start(std::string(folder) + "quintara-start-" + kKinds[kind]);
      if (i == 0) continue;  // reads the libraries from the disk
      times[kind].push_back(run.microseconds);
      memory[kind].push_back(run.kilobytes);
    }
  }
  for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
    printLine("start", kKinds[kind], times[kind]);
    printLine("memory", kKinds[kind], memory[kind]);
  }
}

}  // namespace quintara::bench
