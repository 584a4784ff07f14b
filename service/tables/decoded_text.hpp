#pragma once

#include <string>
#include <string_view>

namespace quintara::quotes {

/// A file's bytes as text.
struct DecodedText {
  std::string text;      ///< UTF-8 without a byte order mark; lines end as they did
  std::string encoding;  ///< UTF-8, UTF-16LE, Windows-1252 ...
  std::string problem;   ///< why there is no text, one line; empty when there is
  std::string bytes;     ///< as they came, where nothing but want of a better one says Windows-1252
};

/// By the byte order mark; without one UTF-16 where zero bytes make that certain, UTF-8 where it is
/// valid, and Windows-1252 for all else. What an encoding does not have becomes U+FFFD.
/// Spreadsheets, archives, pictures and web pages under a wrong name are refused.
DecodedText decoded(std::string bytes);

/// Text in UTF-8 out of bytes in an encoding that the C library knows.
std::string converted(std::string_view bytes, const std::string& encoding);

}  // namespace quintara::quotes
