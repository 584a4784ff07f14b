#pragma once

#include <optional>
#include <string_view>

namespace quintara::quotes {

/// What a column of a price table may hold. Last is a last price, which may stand for the close.
enum class Use { Date, Time, Open, High, Low, Close, Last, Volume, Ticker };
inline constexpr std::size_t kUses = 9;

std::string_view nameOf(Use use);

/// Whose prices they are, the first before the others where a table has several.
enum class Side { Plain, Middle, Bid, Ask, Adjusted };
inline constexpr std::size_t kSides = 5;

struct NamedUse {
  Use use;
  Side side = Side::Plain;
  int rank = 0;  ///< of two columns for one use the lower is taken
};

/// What the name of a column says in any language of the table, whatever else stands around the
/// word: currencies, numbers, "price", the ticker. No value for names that say none of these.
std::optional<NamedUse> useOf(std::string_view name, std::string_view ticker);

}  // namespace quintara::quotes
