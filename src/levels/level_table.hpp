#pragma once

#include <array>
#include <cstddef>

#include "platform/controls.hpp"

namespace quintara {

/// The three levels of one kind of a point set.
using Levels = std::array<float, 3>;

/// All calculated levels; a row a set and kind, see PointSet. Only Calculate writes it, and nothing
/// resets it.
using LevelTable = std::array<Levels, 8>;

inline constexpr std::size_t kSets = 4;

/// What belongs to one point set A1 to A4: its controls and its rows of the level table.
struct PointSet {
  CheckBox* chkShow = nullptr;
  std::array<CheckBox*, 3> chkTargets{};
  std::array<Label*, 3> lblRetracements{};
  std::array<Label*, 3> lblTargets{};
  std::size_t retracementRow = 0;
  std::size_t targetRow = 0;
};

/// A1, A2, A3, A4.
using PointSets = std::array<PointSet, kSets>;

/// The point boxes in the order in which they are read and cleared.
enum PointBox : std::size_t { kA1, kA2, kA3, kA4, kB1, kB2, kC1, kC2, kPointBoxes };
using PointBoxes = std::array<TextBox*, kPointBoxes>;

}  // namespace quintara
