#include "service/text/secret.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>
#include <vector>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

using Ends = std::vector<std::size_t>;

constexpr int kLayers = 3;  // of one encoding around itself, as in %25252F

constexpr auto kReferences = std::to_array<std::pair<std::string_view, char>>(
    {{"&amp;", '&'}, {"&quot;", '"'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&apos;", '\''}});

bool standsAt(std::string_view text, std::size_t at, std::string_view word) {
  return at <= text.size() && equalIgnoringCase(text.substr(at, word.size()), word);
}

bool isSame(char a, char b) { return equalIgnoringCase({&a, 1}, {&b, 1}); }

bool hexStandsAt(std::string_view text, std::size_t at, char c) {
  if (at + 2 > text.size()) {
    return false;
  }
  unsigned value = 0;
  const char* const first = text.data() + at;
  return std::from_chars(first, first + 2, value, 16).ptr == first + 2 &&
         isSame(static_cast<char>(value), c);
}

void addPercent(std::string_view text, std::size_t at, char c, Ends& ends) {
  bool percent = standsAt(text, at, "%");
  ++at;
  for (int layer = 0; percent && layer <= kLayers; ++layer) {
    if (hexStandsAt(text, at, c)) {
      ends.push_back(at + 2);
    }
    percent = standsAt(text, at, "25");
    at += 2;
  }
}

// A backslash may have become \x5c on its way into a line of the log.
void addBackslash(std::string_view text, std::size_t at, char c, int layers, Ends& ends) {
  for (const std::string_view backslash : {"\\", "\\x5c"}) {
    if (!standsAt(text, at, backslash)) {
      continue;
    }
    const std::size_t after = at + backslash.size();
    if (standsAt(text, after, {&c, 1})) {
      ends.push_back(after + 1);
    }
    for (const std::string_view hex : {"x", "u00"}) {
      if (standsAt(text, after, hex) && hexStandsAt(text, after + hex.size(), c)) {
        ends.push_back(after + hex.size() + 2);
      }
    }
    if (layers > 1) {
      addBackslash(text, after, c, layers - 1, ends);
    }
  }
}

void addReference(std::string_view text, std::size_t at, char c, Ends& ends) {
  for (const auto& [name, character] : kReferences) {
    if (character == c && standsAt(text, at, name)) {
      ends.push_back(at + name.size());
    }
  }
  if (!standsAt(text, at, "&#")) {
    return;
  }
  const bool hex = standsAt(text, at + 2, "x");
  unsigned value = 0;
  const char* const last = text.data() + text.size();
  const auto number = std::from_chars(text.data() + at + (hex ? 3 : 2), last, value, hex ? 16 : 10);
  if (number.ec == std::errc() && value < 0x80 && isSame(static_cast<char>(value), c)) {
    const auto end = static_cast<std::size_t>(number.ptr - text.data());
    ends.push_back(end);
    if (standsAt(text, end, ";")) {
      ends.push_back(end + 1);
    }
  }
}

// Adds where a spelling of `c` ends that begins at `at`: one text may be read in several ways.
void addEnds(std::string_view text, std::size_t at, char c, Ends& ends) {
  if (standsAt(text, at, {&c, 1})) {
    ends.push_back(at + 1);
  }
  addPercent(text, at, c, ends);
  addBackslash(text, at, c, kLayers, ends);
  addReference(text, at, c, ends);
}

}  // namespace

// The farthest end of the secret that begins at `at`; `at` itself if none does.
std::size_t Secret::endAt(std::string_view text, std::size_t at) const {
  Ends ends{at};
  for (const char c : value_) {
    Ends next;
    for (const std::size_t end : ends) {
      addEnds(text, end, c, next);
    }
    if (next.empty()) {
      return at;
    }
    std::sort(next.begin(), next.end());
    next.erase(std::unique(next.begin(), next.end()), next.end());
    ends = std::move(next);
  }
  return ends.back();
}

std::string Secret::hiddenIn(std::string_view text, std::size_t longest) const {
  std::string result;
  std::size_t hidden = 0;  // up to here; the secret may overlap itself
  for (std::size_t at = 0; at < text.size() && result.size() < longest; ++at) {
    const std::size_t end = endAt(text, at);
    if (at >= hidden) {
      result += end > at ? "***" : std::string(1, text[at]);
    }
    hidden = std::max(hidden, end);
  }
  return result.substr(0, longest);
}

}  // namespace quintara::quotes
