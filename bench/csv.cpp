#include "csv.hpp"

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>

#include "exports.hpp"
#include "picture_scene.hpp"
#include "samples.hpp"
#include "scenes.hpp"

namespace quintara::bench {

namespace {

double microseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  const auto end = std::chrono::steady_clock::now();
  return std::chrono::duration<double, std::micro>(end - start).count();
}

std::vector<double> samplesOf(const std::function<void()>& work, int count) {
  work();  // once unmeasured: glyphs, pages, caches
  std::vector<double> samples;
  for (int i = 0; i < count; ++i) samples.push_back(microseconds(work));
  return samples;
}

void printRedraw(const ChartSize& size, int count) {
  RedrawScene scene(size);
  // In turns, so that a busy neighbour slows both.
  std::vector<double> redraws;
  std::vector<double> fills;
  scene.redraw();
  for (int i = 0; i < count; ++i) {
    fills.push_back(microseconds([&] { scene.fill(); }));
    redraws.push_back(microseconds([&] { scene.redraw(); }));
  }
  const std::string name = std::to_string(size.width) + "x" + std::to_string(size.height);
  printLine("redraw", name, redraws);
  printLine("fill", name, fills);
}

void printPicture(const ChartSize& size, int count) {
  PictureScene scene(size.width, size.height);
  const std::string name = std::to_string(size.width) + "x" + std::to_string(size.height);
  printLine("picture", name, samplesOf([&] { scene.draw(); }, count));
  printLine("encode", name, samplesOf([&] { scene.encode(); }, count));
}

}  // namespace

void printCsv(Platform& platform, bool quick) {
  const int count = quick ? 3 : 600;
  for (const ChartSize& size : kChartSizes) printRedraw(size, count);
  for (const ChartSize& size : kChartSizes) printPicture(size, std::min(count, 100));
  for (const std::size_t rows : kRowCounts) {
    SeriesScene scene(rows);
    printLine("series", std::to_string(rows), samplesOf([&] { scene.build(); }, count));
  }
  CalculateScene calculate(platform.toolkit);
  printLine("calculate", "24", samplesOf([&] { calculate.calculate(); }, count));
  for (const std::size_t rows : kRowCounts) {
    HoverScene scene(platform, rows);
    printLine("hover", std::to_string(rows), samplesOf([&] { scene.move(); }, count));
  }
  printExports(std::min(count, 100));
}

}  // namespace quintara::bench
