#include "platform/qt/keyboard_pointer.hpp"

#include <QKeyEvent>
#include <algorithm>
#include <cmath>

namespace quintara {

namespace {

constexpr int kToTheEnd = 1 << 20;
constexpr int kPage = 30;
constexpr int kFaster = 10;

struct KeyStep {
  Qt::Key key;
  KeyboardPointer::Step step;
};
constexpr KeyStep kSteps[] = {
    {Qt::Key_Left, {.stops = 1}},        {Qt::Key_Right, {.stops = -1}},
    {Qt::Key_PageUp, {.stops = kPage}},  {Qt::Key_PageDown, {.stops = -kPage}},
    {Qt::Key_End, {.stops = kToTheEnd}}, {Qt::Key_Home, {.stops = -kToTheEnd}},
    {Qt::Key_Up, {.pixels = -1}},        {Qt::Key_Down, {.pixels = 1}},
};

}  // namespace

std::optional<KeyboardPointer::Step> KeyboardPointer::stepOf(const QKeyEvent& key) {
  const Qt::KeyboardModifiers with = key.modifiers() & ~Qt::KeypadModifier;
  for (const KeyStep& row : kSteps) {
    if (row.key != key.key()) {
      continue;
    }
    if (with == Qt::NoModifier) {
      return row.step;
    }
    if (with == Qt::ControlModifier && row.step.pixels != 0) {
      return Step{.pixels = row.step.pixels * kFaster};
    }
  }
  return std::nullopt;
}

bool KeyboardPointer::go(Step step, const std::vector<PointerStop>& stops, const Raster& raster) {
  std::vector<PointerStop> within;
  std::copy_if(stops.begin(), stops.end(), std::back_inserter(within),
               [&](const PointerStop& stop) { return raster.Point(stop.X, stop.Y) != -1; });
  if (within.empty()) {
    return false;
  }
  if (!at_ || raster.Point(at_->X, at_->Y) == -1) {  // another chart may have come meanwhile
    at_ = within.front();
    if (step.stops != kToTheEnd) {
      return true;
    }
  }
  if (step.stops != 0) {
    const auto nearest = std::min_element(within.begin(), within.end(), [&](auto& a, auto& b) {
      return std::abs(a.X - at_->X) < std::abs(b.X - at_->X);
    });
    const auto wanted = nearest - within.begin() + step.stops;
    at_->X = within
                 .at(static_cast<std::size_t>(
                     std::clamp<std::ptrdiff_t>(wanted, 0, std::ssize(within) - 1)))
                 .X;
  }
  at_->Y = raster.below(at_->Y, step.pixels);
  return true;
}

}  // namespace quintara
