#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "data/chart_state.hpp"
#include "platform/platform.hpp"

namespace quintara {

/// Positions of a row's fields.
enum RowField : std::size_t { kDate, kOpen, kHigh, kLow, kClose, kVolume, kRowFields };

/// The fields of one row, which are separated by "@" and must outlive this. What stands behind the
/// volume is left alone.
class RowFields {
 public:
  explicit RowFields(std::string_view row);

  /// Throws SubscriptOutOfRange for a field that the row does not have.
  [[nodiscard]] std::string_view text(RowField field) const;
  /// The field as a single-precision number under the user's locale.
  /// Throws SubscriptOutOfRange, TypeMismatch or Overflow.
  [[nodiscard]] float number(RowField field) const;

 private:
  std::array<std::string_view, kRowFields> fields_;
  std::size_t count_ = 0;
};

/// The first row that is a bar: 0, or 1 when today's quote does not count, because the service had
/// no value for one of its fields, today is a Saturday or Sunday, or the interval is not daily.
/// Throws SubscriptOutOfRange when there are no rows.
std::size_t firstBarRow(const ChartState& state, Date today);

}  // namespace quintara
