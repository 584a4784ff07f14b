#include "levels/calculate.hpp"

#include "levels/range_for_levels.hpp"
#include "values/numbers.hpp"
#include "values/text.hpp"

namespace quintara {

namespace {

using PointValues = std::array<float, kPointBoxes>;

struct Points {
  float A, B, C;
};

PointValues readBoxes(const PointBoxes& boxes) {
  PointValues values{};
  for (std::size_t i = 0; i < kPointBoxes; ++i) {
    values[i] = toSingle(readLeadingNumber(boxes[i]->Text()));
  }
  return values;
}

/// The points of a set: A1 and A2 share the up trend's end points, A3 and A4 the down trend's.
Points pointsOf(std::size_t set, const PointValues& values) {
  const bool up = set < 2;
  return {values[kA1 + set], values[up ? kB1 : kB2], values[up ? kC1 : kC2]};
}

void store(float level, float& entry, Label& label) {
  entry = level;
  label.setCaption(defaultText(level));
}

}  // namespace

float retracement(float A, float B, std::size_t index) {
  constexpr std::array kRatios{0.382, 0.5, 0.618};
  const double move = double{B} - double{A};
  return toSingle(roundTo3(double{B} - move * kRatios.at(index)));
}

float target(float A, float B, float C, std::size_t index) {
  // The plain move is added up in single precision, the multiples in double.
  if (index == 0) {
    return toSingle(roundTo3((Single(B) - A + C).value()));
  }
  const double ratio = index == 1 ? 1.382 : 1.618;
  return toSingle(roundTo3((double{B} - double{A}) * ratio + double{C}));
}

void cmdCalculate_Click(ChartState& state, LevelTable& sngLevels, const PointBoxes& boxes,
                        const PointSets& sets) {
  const PointValues values = readBoxes(boxes);
  for (std::size_t s = 0; s < kSets; ++s) {
    const auto [A, B, C] = pointsOf(s, values);
    if (!(A > 0 && B > 0)) {
      continue;
    }
    for (std::size_t i = 0; i < 3; ++i) {
      store(retracement(A, B, i), sngLevels[sets[s].retracementRow][i],
            *sets[s].lblRetracements[i]);
    }
  }
  for (std::size_t s = 0; s < kSets; ++s) {
    const auto [A, B, C] = pointsOf(s, values);
    if (!(A > 0 && B > 0 && C > 0)) {
      continue;
    }
    Levels& row = sngLevels[sets[s].targetRow];
    for (std::size_t i = 0; i < 3; ++i) {
      store(target(A, B, C, i), row[i], *sets[s].lblTargets[i]);
    }
    stretchRange(state, s, row);
  }
}

}  // namespace quintara
