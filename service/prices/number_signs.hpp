#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quintara::quotes {

/// What one number shows of the signs in it.
enum class SignUse { None, Point, Comma, UnclearPoint, UnclearComma, Wrong };

/// A number's digits and signs without the currency, percent sign or blanks around it; empty for
/// what is no number.
std::string_view bareNumber(std::string_view text);

/// Point and Comma name the decimal sign that the number proves: 1.5, 1,234.5 and 1,234,567 prove
/// the point. One sign with three digits behind it, as in 1.234, proves nothing.
SignUse signUseOf(std::string_view text);

/// Writes a number with a point as its only sign ("1234.5") into `plain`, which is only used where
/// the text cannot stand as it is. With `comma` the decimal sign is the comma. Group signs are
/// blanks, apostrophes and the other one of point and comma, between groups of three digits (two as
/// in India). No value for what is no number, or one below 0.
std::optional<std::string_view> plainNumber(std::string_view text, bool comma, std::string& plain);

/// Whether a text says that there is no value: -, N/A, null, nothing.
bool isNothing(std::string_view text);

/// What all numbers of a table together say about the decimal sign.
struct SignFound {
  bool comma = false;
  bool any = false;      ///< there are signs
  std::string why;       ///< one line, escaped
  bool unclear = false;  ///< every sign may be either, and `comma` says which one it is
  std::string problem;   ///< why the sign is not known; empty when it is
};

/// Collects what decides whether 1,234 is a thousand or a little more than one.
class SignEvidence {
 public:
  void addPrice(std::size_t line, std::string_view text);
  /// Any other number of the table, which is asked where the prices say nothing.
  void addOther(std::size_t line, std::string_view text);

  SignFound decide() const;

 private:
  struct Seen {
    std::size_t count = 0;
    std::size_t line = 0;
    std::string text;  ///< the first one
    void add(std::size_t at, std::string_view what);
  };
  using Seens = std::array<Seen, 6>;  ///< by SignUse

  static std::optional<SignFound> proven(const Seens& seen);

  Seens prices_;
  Seens others_;
  Seen longs_;  ///< whole prices from 1000 on without any sign
};

}  // namespace quintara::quotes
