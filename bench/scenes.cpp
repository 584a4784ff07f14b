#include "scenes.hpp"

#include <cstring>
#include <string>

#include "chart/draw_chart.hpp"
#include "chart/price_range.hpp"
#include "data/initialize_collection.hpp"
#include "interaction/pointer_readout.hpp"
#include "levels/calculate.hpp"
#include "levels/level_lines.hpp"
#include "platform/qt/glyphs.hpp"
#include "platform/qt/make_control.hpp"
#include "platform/raster.hpp"

namespace quintara::bench {

namespace {

const Date kMonday = std::chrono::year{2026} / 11 / 16;

/// A walk that rises and falls, newest first, as the rows of a download.
std::vector<std::string> rows(std::size_t count) {
  std::vector<std::string> result;
  std::uint32_t random = 2463534242U;
  const auto next = [&random](std::uint32_t below) {
    random ^= random << 13U;
    random ^= random >> 17U;
    random ^= random << 5U;
    return static_cast<int>(random % below);
  };
  const auto price = [](int cents) {
    std::string text = std::to_string(cents / 100) + "." + std::to_string(cents % 100 + 100);
    text.erase(text.size() - 3, 1);
    return text;
  };
  int close = 30000;
  for (std::size_t i = 0; i < count; ++i) {
    const int open = close + next(801) - 400;
    const int high = std::max(open, close) + next(300);
    const int low = std::min(open, close) - next(300);
    result.push_back("14-Nov-02@" + price(open) + "@" + price(high) + "@" + price(low) + "@" +
                     price(close) + "@" + std::to_string(1000000 + next(1000000)));
    close = std::max(open, 10000);
  }
  result.emplace_back("");
  return result;
}

ChartState stateOf(std::size_t count, std::int16_t spacing, std::int16_t shown) {
  ChartState state;
  state.sRows = rows(count);
  state.iSpacing = spacing;
  state.iShown = shown;
  state.bSuppressed = spacing == 1;
  InitializeCollection(state, kMonday);
  MaxMin(state, kMonday);
  return state;
}

}  // namespace

struct RedrawScene::Parts {
  explicit Parts(const ChartSize& size)
      : state(stateOf(static_cast<std::size_t>(size.shown) + 20, size.spacing, size.shown)) {
    raster.resize(size.width, size.height, 1);
    for (Levels& row : levels) {
      for (float& level : row) {
        level = state.sngMin + (state.sngMax - state.sngMin) * static_cast<float>(++step) / 25;
      }
    }
  }
  QtGlyphs glyphs{formFont(8.25F, false)};
  Raster raster{glyphs, {0}, {0x00FFFFFF}};
  ChartState state;
  LevelTable levels{};
  int step = 0;
};

RedrawScene::RedrawScene(const ChartSize& size) : parts_(std::make_unique<Parts>(size)) {}
RedrawScene::~RedrawScene() = default;

void RedrawScene::redraw() {
  Parts& p = *parts_;
  // Back and forth by up to 3 %, so that no drawing repeats the last one.
  const float margin = static_cast<float>(++p.step % 31) / 1000;
  p.state.sngMax = p.state.sngShownMax * (1 + margin);
  DrawChart(p.state, p.raster);
  constexpr std::array kColours{Colour{0x0000FF}, Colour{0xFF0000}, Colour{0xFF00FF},
                                Colour{0x00FFFF}};
  for (std::size_t set = 0; set < kColours.size(); ++set) {
    DrawLine(p.raster, p.levels[set], p.levels[set + 4], kColours[set], {true, true, true});
  }
}

void RedrawScene::fill() {
  Raster& raster = parts_->raster;
  const auto bytes =
      static_cast<std::size_t>(raster.stride()) * static_cast<std::size_t>(raster.deviceHeight());
  std::memset(const_cast<std::uint32_t*>(raster.pixels()), 0, bytes);
}

struct SeriesScene::Parts {
  ChartState state;
};

SeriesScene::SeriesScene(std::size_t count) : parts_(std::make_unique<Parts>()) {
  parts_->state = stateOf(count, 3, static_cast<std::int16_t>(count - 2));
}
SeriesScene::~SeriesScene() = default;

void SeriesScene::build() {
  InitializeCollection(parts_->state, kMonday);
  MaxMin(parts_->state, kMonday);
}

struct CalculateScene::Parts {
  explicit Parts(Toolkit& toolkit) : window(toolkit.newWindow({.name = "bench"})) {
    for (std::size_t i = 0; i < kPointBoxes; ++i) {
      boxes[i] = &dynamic_cast<TextBox&>(add(ControlKind::TextBox, "box" + std::to_string(i)));
      boxes[i]->setText(std::to_string(100 + 17 * i) + ".25");
    }
    std::size_t row = 0;
    for (PointSet& set : sets) {
      set.retracementRow = row++;
      set.targetRow = row++;
      for (std::size_t i = 0; i < 3; ++i) {
        const std::string name = std::to_string(row) + std::to_string(i);
        set.lblRetracements[i] = &dynamic_cast<Label&>(add(ControlKind::Label, "R" + name));
        set.lblTargets[i] = &dynamic_cast<Label&>(add(ControlKind::Label, "T" + name));
      }
    }
  }
  Control& add(ControlKind kind, const std::string& name) {
    return window->add({.kind = kind, .name = name, .width = 975, .height = 285});
  }
  std::unique_ptr<Window> window;
  ChartState state;
  LevelTable levels{};
  PointBoxes boxes{};
  PointSets sets{};
  bool up = false;
};

CalculateScene::CalculateScene(Toolkit& toolkit) : parts_(std::make_unique<Parts>(toolkit)) {}
CalculateScene::~CalculateScene() = default;

void CalculateScene::calculate() {
  Parts& p = *parts_;
  p.up = !p.up;  // so that every label gets a new text
  p.boxes[0]->setText(p.up ? "100.25" : "99.75");
  p.boxes[2]->setText(p.up ? "200.25" : "199.75");
  cmdCalculate_Click(p.state, p.levels, p.boxes, p.sets);
}

struct HoverScene::Parts {
  Parts(Platform& platform, std::size_t count)
      : window(platform.toolkit.newWindow({.name = "bench"})),
        controls{{label("date"), label("open"), label("high"), label("low"), label("close")},
                 label("current"),
                 platform.screen},
        state(stateOf(count, 3, static_cast<std::int16_t>(count - 2))),
        bars(count) {}
  Label& label(const std::string& name) {
    return dynamic_cast<Label&>(window->add(
        {.kind = ControlKind::Label, .name = name, .width = 735, .height = 210, .meaning = name}));
  }
  std::unique_ptr<Window> window;
  PointerControls controls;
  ChartState state;
  DragState drag;
  std::size_t bars;
  std::size_t bar = 0;
};

HoverScene::HoverScene(Platform& platform, std::size_t count)
    : parts_(std::make_unique<Parts>(platform, count)) {}
HoverScene::~HoverScene() = default;

void HoverScene::move() {
  Parts& p = *parts_;
  p.bar = (p.bar + 1) % p.bars;
  const auto x = 40 + 3 * static_cast<float>(p.bar);
  picChart_MouseMove(p.state, p.drag, p.controls, {0, 0, x, 100 + x / 7});
}

}  // namespace quintara::bench
