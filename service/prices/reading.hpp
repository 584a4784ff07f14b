#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quintara::quotes {

/// How a table of prices was understood, step by step, for whoever asks why. Words are English,
/// names stand as they do in the file; every text is one line and already escaped. What a step did
/// not come to is empty or 0.
struct Reading {
  struct Column {
    std::string use;        ///< Date, Time, Open, High, Low, Close, Volume or Ticker
    std::string name;       ///< empty without a header
    std::size_t place = 0;  ///< from 0 on
  };

  std::string encoding;         ///< UTF-8, UTF-16LE, Windows-1252 ...
  char separator = '\0';        ///< comma, semicolon, tab or bar
  std::size_t headerLine = 0;   ///< from 1 on; 0 for none
  std::vector<Column> columns;  ///< those that are used
  std::string dateOrder;        ///< "day, month, year", where dates have an order
  std::string dateOrderWhy;
  std::string decimalSign;  ///< "point" or "comma", where prices have one
  std::string decimalSignWhy;
};

}  // namespace quintara::quotes
