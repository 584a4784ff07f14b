#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace quintara::quotes {

/// Goes through the rows of a table in a text, which has to outlive it. Lines end in LF or CR LF,
/// or in CR where there is no LF at all. Fields come without blanks, quotation marks and doubled
/// quotation marks; between quotation marks separators are text, and so are a few line ends.
/// Quotation marks that do not match are text as well. Rows with nothing in them are passed over.
class TableRows {
 public:
  TableRows(std::string_view text, char separator);

  /// Goes to the next row; false at the end.
  bool next();

  std::size_t line() const { return line_; }  ///< where the row begins, from 1 on
  std::size_t size() const { return fields_.size(); }
  /// Empty for places that the row does not have. Valid until next().
  std::string_view operator[](std::size_t place) const {
    return place < fields_.size() ? fields_[place] : std::string_view();
  }
  /// The row as it stands.
  std::string_view whole() const { return text_.substr(start_, end_ - start_); }

 private:
  bool takeRow();
  bool takeQuoted();
  void takePlain();
  void skipEnd();

  std::string_view text_;
  char separator_;
  char lineEnd_;
  std::size_t at_ = 0;
  std::size_t start_ = 0;
  std::size_t end_ = 0;
  std::size_t line_ = 0;
  std::size_t nextLine_ = 1;
  std::vector<std::string_view> fields_;
  std::deque<std::string> unquoted_;  ///< fields that stand otherwise in the text
};

/// Whether a row is a comment: its first sign is a number sign.
bool isComment(const TableRows& rows);

/// The separators comma, semicolon, tab and bar, first the one that the first lines agree on most;
/// the one alone that a first line like sep=; names.
std::string separatorsOf(std::string_view text);

/// Whether the line is one that names the separator, as spreadsheets write it.
bool namesSeparator(std::string_view line);

}  // namespace quintara::quotes
