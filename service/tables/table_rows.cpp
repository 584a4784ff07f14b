#include "service/tables/table_rows.hpp"

#include <algorithm>
#include <array>
#include <map>

#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

constexpr std::size_t kLongestQuoted = 4096;
constexpr std::size_t kMostQuotedLines = 16;

// Some programs mark text with an apostrophe on each side.
std::string_view withoutApostrophes(std::string_view text) {
  const bool both = text.size() >= 2 && text.front() == '\'' && text.back() == '\'';
  return both ? withoutBlanks(text.substr(1, text.size() - 2)) : text;
}

}  // namespace

TableRows::TableRows(std::string_view text, char separator)
    : text_(text), separator_(separator), lineEnd_(text.find('\n') == text.npos ? '\r' : '\n') {}

bool TableRows::next() {
  while (at_ < text_.size()) {
    if (takeRow()) {
      return true;
    }
  }
  return false;
}

// Returns whether there is anything in the row.
bool TableRows::takeRow() {
  fields_.clear();
  if (!unquoted_.empty()) {
    unquoted_.clear();
  }
  line_ = nextLine_;
  start_ = at_;
  for (bool more = true; more;) {
    if (!takeQuoted()) {
      takePlain();
    }
    more = at_ < text_.size() && text_[at_] == separator_;
    at_ += more ? 1 : 0;
  }
  end_ = at_;
  skipEnd();
  return std::any_of(fields_.begin(), fields_.end(), [](auto field) { return !field.empty(); });
}

void TableRows::skipEnd() {
  at_ += at_ < text_.size() ? 1 : 0;
  ++nextLine_;
}

void TableRows::takePlain() {
  const auto begin = at_;
  while (at_ < text_.size() && text_[at_] != separator_ && text_[at_] != lineEnd_) {
    ++at_;
  }
  auto field = text_.substr(begin, at_ - begin);
  // Blanks and apostrophes are up to the apostrophe, or not of ASCII.
  const auto mayGo = [](char c) { return static_cast<signed char>(c) <= '\''; };
  if (!field.empty() && (mayGo(field.front()) || mayGo(field.back()))) {
    field = withoutApostrophes(withoutBlanks(field));
  }
  fields_.push_back(field);
}

// Spreadsheets are kept from changing a text by ="text".
bool TableRows::takeQuoted() {
  auto at = at_;
  while (at < text_.size() && text_[at] == ' ') {
    ++at;
  }
  at += at + 1 < text_.size() && text_[at] == '=' && text_[at + 1] == '"' ? 1 : 0;
  if (at >= text_.size() || text_[at] != '"') {
    return false;
  }
  const auto begin = ++at;
  const auto limit = std::min(text_.size(), begin + kLongestQuoted);
  bool doubled = false;
  for (at = text_.find('"', at); at < limit && at + 1 < text_.size() && text_[at + 1] == '"';
       at = text_.find('"', at + 2)) {
    doubled = true;
  }
  if (at >= limit) {
    return false;
  }
  const auto content = text_.substr(begin, at - begin);
  const auto lines = static_cast<std::size_t>(std::count(content.begin(), content.end(), lineEnd_));
  if (lines > kMostQuotedLines) {
    return false;
  }
  ++at;
  while (at < text_.size() && text_[at] != separator_ &&
         (text_[at] == ' ' || text_[at] == '\t' || (text_[at] == '\r' && lineEnd_ == '\n'))) {
    ++at;
  }
  if (at < text_.size() && text_[at] != separator_ && text_[at] != lineEnd_) {
    return false;
  }
  if (doubled) {
    std::string& plain = unquoted_.emplace_back();
    for (std::size_t i = 0; i < content.size(); ++i) {
      plain += content[i];
      i += content[i] == '"' ? 1 : 0;
    }
    fields_.push_back(withoutBlanks(plain));
  } else {
    fields_.push_back(withoutBlanks(content));
  }
  nextLine_ += lines;
  at_ = at;
  return true;
}

bool isComment(const TableRows& rows) {
  const auto whole = rows.whole();
  const auto first = whole.find_first_not_of(" \t\"");
  return first != whole.npos && whole[first] == '#';
}

bool namesSeparator(std::string_view line) {
  const auto bare = line.substr(!line.empty() && line.front() == '"' ? 1 : 0);
  return bare.size() >= 5 && equalIgnoringCase(bare.substr(0, 4), "sep=");
}

std::string separatorsOf(std::string_view text) {
  constexpr std::size_t kSample = 60;
  const auto firstLine = text.substr(0, std::min(text.find_first_of("\r\n"), text.size()));
  if (namesSeparator(firstLine)) {
    return {firstLine[firstLine.find('=') + 1]};
  }
  // In this order where the lines agree as much: commas also stand in numbers
  // and in text.
  std::string separators = "\t;|,";
  std::map<char, std::size_t> agreeing;
  for (const char separator : separators) {
    std::map<std::size_t, std::size_t> linesOfSize;
    TableRows rows(text, separator);
    for (std::size_t i = 0; i < kSample && rows.next(); ++i) {
      if (rows.size() > 1) {
        agreeing[separator] = std::max(agreeing[separator], ++linesOfSize[rows.size()]);
      }
    }
  }
  std::stable_sort(separators.begin(), separators.end(),
                   [&](char a, char b) { return agreeing[a] > agreeing[b]; });
  return separators;
}

}  // namespace quintara::quotes
