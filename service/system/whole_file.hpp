#pragma once

#include <cstddef>
#include <string>

namespace quintara::quotes {

/// What a file holds, or why that could not be had.
struct WholeFile {
  std::string text;
  std::string problem;  ///< one line; empty if there is a text
};

/// Reads the regular file behind a descriptor, from its beginning. One larger than `largest` bytes
/// is refused, and so is one that changes meanwhile: it would be a mix of old and new lines.
WholeFile wholeFile(int descriptor, std::size_t largest);

/// Puts a file into a folder, in place of one of that name: whole, or not at all if even the power
/// fails meanwhile. Returns why it could not be done, on one line; nothing when it is done.
std::string putFile(int folder, const std::string& name, const std::string& text);

/// What a number in errno means.
std::string reasonFor(int error);

}  // namespace quintara::quotes
