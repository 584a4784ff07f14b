#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "csv.hpp"
#include "platform/qt/application.hpp"
#include "scenes.hpp"

namespace quintara::bench {
namespace {

void registerAll(Platform& platform) {
  using benchmark::RegisterBenchmark;
  using benchmark::State;
  for (const ChartSize& size : kChartSizes) {
    const std::string name = std::to_string(size.width) + "x" + std::to_string(size.height);
    RegisterBenchmark(("redraw/" + name).c_str(), [size](State& state) {
      RedrawScene scene(size);
      for (auto _ : state) scene.redraw();
    });
    RegisterBenchmark(("fill/" + name).c_str(), [size](State& state) {
      RedrawScene scene(size);
      for (auto _ : state) scene.fill();
    });
  }
  for (const std::size_t rows : kRowCounts) {
    const std::string name = std::to_string(rows);
    RegisterBenchmark(("series/" + name).c_str(), [rows](State& state) {
      SeriesScene scene(rows);
      for (auto _ : state) scene.build();
    });
    RegisterBenchmark(("hover/" + name).c_str(), [rows, &platform](State& state) {
      HoverScene scene(platform, rows);
      for (auto _ : state) scene.move();
    });
  }
  RegisterBenchmark("calculate", [&platform](State& state) {
    CalculateScene scene(platform.toolkit);
    for (auto _ : state) scene.calculate();
  });
}

bool take(std::vector<char*>& arguments, const std::string& flag) {
  return std::erase_if(arguments, [&](const char* argument) { return argument == flag; }) > 0;
}

}  // namespace
}  // namespace quintara::bench

int main(int argc, char** argv) {
  using namespace quintara::bench;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  std::vector<char*> arguments(argv, argv + argc);
  const bool quick = take(arguments, "--quick");
  const bool csv = take(arguments, "--csv");
  const bool start = take(arguments, "--start");
  int count = static_cast<int>(arguments.size());
  if (start) {
    const std::string program = argv[0];
    printStart(program.substr(0, program.find_last_of('/') + 1).c_str(), quick);
    return 0;
  }
  quintara::QtApplication application(count, arguments.data());
  if (csv) {
    printCsv(application.platform(), quick);
    return 0;
  }
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
  registerAll(application.platform());
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
