#include "service/tables/decoded_text.hpp"

#include <iconv.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

using namespace std::string_view_literals;

struct Mark {
  std::string_view bytes;
  const char* meaning;
};

// The longer marks first: one of UTF-32 begins like one of UTF-16.
constexpr std::array kByteOrderMarks{
    Mark{"\xFF\xFE\0\0"sv, "UTF-32LE"}, Mark{"\0\0\xFE\xFF"sv, "UTF-32BE"},
    Mark{"\xEF\xBB\xBF"sv, "UTF-8"},    Mark{"\xFF\xFE"sv, "UTF-16LE"},
    Mark{"\xFE\xFF"sv, "UTF-16BE"},
};

constexpr auto kSpreadsheet =
    "a spreadsheet or an archive, not text: open it in its program and save the sheet as CSV";
constexpr auto kCompressed = "a compressed file: unpack it first";
constexpr auto kPicture = "a picture, not text";
constexpr auto kPage = "a web page, not a table: download the prices themselves, as CSV";

constexpr std::array kOtherFiles{
    Mark{"PK\x03\x04"sv, kSpreadsheet},
    Mark{"PK\x05\x06"sv, kSpreadsheet},
    Mark{"\xD0\xCF\x11\xE0"sv, kSpreadsheet},
    Mark{"\x1F\x8B"sv, kCompressed},
    Mark{"BZh"sv, kCompressed},
    Mark{"\xFD\x37zXZ"sv, kCompressed},
    Mark{"7z\xBC\xAF"sv, kCompressed},
    Mark{"\x28\xB5\x2F\xFD"sv, kCompressed},
    Mark{"%PDF"sv, "a PDF document, not text: download the prices as CSV"},
    Mark{"{\\rtf"sv, "a document of a word processor: save it as plain text"},
    Mark{"SQLite format 3"sv, "a database, not text: export the table as CSV"},
    Mark{"PAR1"sv, "a binary table, not text: export it as CSV"},
    Mark{"\x89PNG"sv, kPicture},
    Mark{"\xFF\xD8\xFF"sv, kPicture},
    Mark{"GIF8"sv, kPicture},
};

// In lower case. A header may begin with < as well: <DATE>.
constexpr std::array kPages{"<!doctype"sv, "<html"sv,   "<head"sv, "<body"sv, "<table"sv,
                            "<?xml"sv,     "<script"sv, "<div"sv,  "<meta"sv, "<!--"sv};

bool beginsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

// Text of mostly Latin letters has a zero byte in every other place, plain text none.
const char* encodingByZeros(std::string_view bytes) {
  constexpr std::size_t kSample = 4096;
  const auto sample = bytes.substr(0, kSample);
  std::array<std::size_t, 2> zeros{};
  for (std::size_t i = 0; i < sample.size(); ++i) {
    zeros.at(i % 2) += sample[i] == '\0' ? 1 : 0;
  }
  const auto many = sample.size() / 4;
  if (many == 0 || (zeros[0] > 0 && zeros[1] > 0)) {
    return nullptr;
  }
  return zeros[1] > many ? "UTF-16LE" : zeros[0] > many ? "UTF-16BE" : nullptr;
}

bool isBinary(std::string_view bytes) {
  const auto sample = bytes.substr(0, 4096);
  const auto zeros = std::count(sample.begin(), sample.end(), '\0');
  return static_cast<std::size_t>(zeros) > sample.size() / 8;
}

bool isUtf8(std::string_view bytes) {
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(bytes.data());
  const auto* const end = at + bytes.size();
  while (at != end) {
    if (*at < 0x80) {
      ++at;
      continue;
    }
    utf8proc_int32_t character = 0;
    const auto length = utf8proc_iterate(at, end - at, &character);
    if (length < 0) {
      return false;
    }
    at += length;
  }
  return true;
}

const char* problemOf(std::string_view text) {
  const auto start =
      lowerCase(text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()), 20));
  const bool page =
      std::any_of(kPages.begin(), kPages.end(), [&](auto tag) { return beginsWith(start, tag); });
  return page ? kPage : start.empty() ? "the file is empty" : "";
}

}  // namespace

// Bytes that the encoding does not have are left out one unit at a time, with U+FFFD in their
// place.
std::string converted(std::string_view bytes, const std::string& encoding) {
  const std::size_t unit = encoding.find("UTF-16") != encoding.npos   ? 2
                           : encoding.find("UTF-32") != encoding.npos ? 4
                                                                      : 1;
  const iconv_t converter = ::iconv_open("UTF-8", encoding.c_str());
  std::string text;
  text.reserve(bytes.size() / unit + bytes.size() / 8);
  std::array<char, 65'536> buffer{};
  auto* from = const_cast<char*>(bytes.data());  // iconv only reads it
  std::size_t left = bytes.size() / unit * unit;
  while (left > 0) {
    char* to = buffer.data();
    std::size_t room = buffer.size();
    const bool failed =
        ::iconv(converter, &from, &left, &to, &room) == static_cast<std::size_t>(-1);
    const int error = errno;
    text.append(buffer.data(), to);
    if (failed && error != E2BIG) {
      text += "\xEF\xBF\xBD";
      from += std::min(unit, left);
      left -= std::min(unit, left);
    }
  }
  ::iconv_close(converter);
  return text;
}

DecodedText decoded(std::string bytes) {
  for (const Mark& other : kOtherFiles) {
    if (beginsWith(bytes, other.bytes)) {
      return {{}, {}, other.meaning, {}};
    }
  }
  DecodedText result;
  std::size_t start = 0;
  for (const Mark& mark : kByteOrderMarks) {
    if (result.encoding.empty() && beginsWith(bytes, mark.bytes)) {
      result.encoding = mark.meaning;
      start = mark.bytes.size();
    }
  }
  if (const char* wide = result.encoding.empty() ? encodingByZeros(bytes) : nullptr) {
    result.encoding = wide;
  }
  if (result.encoding.empty() && isBinary(bytes)) {
    return {{}, {}, "not text but a program's own format: export the prices as CSV", {}};
  }
  if (result.encoding.empty() || result.encoding == "UTF-8") {
    result.encoding = isUtf8(std::string_view(bytes).substr(start)) ? "UTF-8" : "Windows-1252";
  }
  if (result.encoding == "UTF-8") {
    result.text = std::move(bytes);
    result.text.erase(0, start);
  } else {
    result.text = converted(std::string_view(bytes).substr(start), result.encoding);
    result.bytes = result.encoding == "Windows-1252" ? std::move(bytes) : std::string();
  }
  result.problem = problemOf(result.text);
  return result;
}

}  // namespace quintara::quotes
