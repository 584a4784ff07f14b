#pragma once

#include <cstdio>
#include <string>

// Replies as the quote service sends them.
namespace quintara::test {

/// A table of `bars` rows, newest first: bar i (from 0) opens at 50 + i, closes at 50.5 + i,
/// between 49 + i and 52 + i.
inline std::string table(int bars) {
  std::string text = "Date,Open,High,Low,Close,Volume\n";
  for (int i = 0; i < bars; ++i) {
    char row[80];
    std::snprintf(row, sizeof row, "14-Nov-02,%d.00,%d.00,%d.00,%d.50,1000\n", 50 + i, 52 + i,
                  49 + i, 50 + i);
    text += row;
  }
  return text;
}

inline std::string quote(const std::string& open = "60.25") {
  return "\"XYZ\",60.50,\"11/16/2026\",\"4:00pm\",+0.10," + open + ",61.75,59.50,123456789\r\n";
}

}  // namespace quintara::test
