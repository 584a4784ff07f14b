#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace quintara::fuzz {

/// Tries one input. Every target defines its own; what it lets escape, and every rule that it finds
/// broken, is a finding.
void tryInput(std::string_view input);

/// Ends the run with the rule that does not hold; the fuzzer then keeps the input.
inline void check(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "Broken rule: %s\n", rule);
  std::abort();
}

/// Takes the text up to `end` from the front, and `end` with it.
inline std::string_view take(std::string_view& text, char end) {
  const std::string_view piece = text.substr(0, text.find(end));
  text.remove_prefix(piece.size() < text.size() ? piece.size() + 1 : piece.size());
  return piece;
}

}  // namespace quintara::fuzz
