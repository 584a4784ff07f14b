#include <gmock/gmock.h>
#include <iconv.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>

#include "service/prices/price_file.hpp"

namespace quintara::quotes {

// A shape of the table beside this file, which explains its form.
struct Shape {
  std::string title, text, expected;
  std::map<std::string, std::string> options;
};

std::vector<Shape> shapes() {
  std::ifstream file(QUINTARA_EXPORTS "/shapes.txt");
  std::vector<Shape> result;
  std::string* part = nullptr;
  for (std::string line; std::getline(file, line);) {
    if (line.rfind("=== ", 0) == 0) {
      Shape& shape = result.emplace_back();
      shape.title = line.substr(4);
      for (auto at = line.find(" ["); at != line.npos; at = line.find(" [", at + 1)) {
        const auto blank = line.find(' ', at + 1);
        shape.options[line.substr(at + 2, blank - at - 2)] =
            line.substr(blank + 1, line.find(']', at) - blank - 1);
      }
      part = &shape.text;
    } else if (line == "---") {
      part = &result.back().expected;
    } else if (part != nullptr) {
      *part += line + "\n";
    }
  }
  return result;
}

std::string replaced(std::string text, const std::string& old, const std::string& with) {
  for (auto at = text.find(old); at != text.npos; at = text.find(old, at + with.size())) {
    text.replace(at, old.size(), with);
  }
  return text;
}

std::string encoded(std::string text, std::string encoding) {
  if (encoding == "escaped") {
    for (auto at = text.find("\\x"); at != text.npos; at = text.find("\\x", at + 1)) {
      text.replace(at, 4, 1, static_cast<char>(std::stoi(text.substr(at + 2, 2), nullptr, 16)));
    }
    return text;
  }
  if (const auto mark = encoding.find("-mark"); mark != encoding.npos) {
    text.insert(0, "\xEF\xBB\xBF");
    encoding.erase(mark);
  }
  std::string bytes(text.size() * 2, '\0');
  char *from = text.data(), *to = bytes.data();
  std::size_t left = text.size(), room = bytes.size();
  const iconv_t converter = ::iconv_open(encoding.empty() ? "UTF-8" : encoding.c_str(), "UTF-8");
  EXPECT_EQ(::iconv(converter, &from, &left, &to, &room), 0U) << encoding;
  ::iconv_close(converter);
  return bytes.substr(0, bytes.size() - room);
}

std::string outcome(const PriceFile& file) {
  std::string result;
  for (const auto& [date, open, high, low, close, volume] : file.bars) {
    for (const std::string& word : {tableDate(date), open.text(), high.text(), low.text()}) {
      result += word + " ";
    }
    result += close.text() + " " + std::to_string(volume) + "\n";
  }
  if (!file.problem.empty()) {
    return result + "refused: " + file.problem + "\n";
  }
  for (const std::string& complaint : file.complaints) {
    result += "left out, " + complaint + "\n";
  }
  return result;
}

TEST(PriceFile, ReadsEveryShapeOfExports) {
  std::set<std::string> titles;
  for (Shape& shape : shapes()) {
    EXPECT_TRUE(titles.insert(shape.title).second) << shape.title;
    RowRules rules;
    rules.ticker = "ABC";
    const std::string region = shape.options["region"];
    rules.region = region == "day"     ? DayOrder::DayFirst
                   : region == "month" ? DayOrder::MonthFirst
                                       : DayOrder::Unclear;
    const std::string ends = shape.options["ends"];
    const std::string text = replaced(shape.text, "\n",
                                      ends == "crlf" ? "\r\n"
                                      : ends == "cr" ? "\r"
                                                     : "\n");
    const PriceFile file = parsePriceFile(encoded(text, shape.options["encoding"]), rules);
    EXPECT_EQ(outcome(file), shape.expected) << shape.title;
  }
  EXPECT_GE(titles.size(), 100U);
}

}  // namespace quintara::quotes
