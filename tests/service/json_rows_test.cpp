#include "service/json_rows.hpp"

#include <gtest/gtest.h>

#include "service/replies.hpp"

namespace quintara::quotes {
namespace {

// The bars newest first, then the number of bad rows, then why there are no bars.
std::string summary(const std::string& text, const std::string& path, const ColumnNames& names) {
  const PriceRows rows = parseJsonRows(text, path, {names, parseDay, std::nullopt});
  const std::string table = tableText(rows.bars, Day::min());
  std::string result = table.substr(table.find('\n') + 1) + std::to_string(rows.badLines);
  for (const std::string& complaint : rows.complaints) {
    result += "; " + complaint;
  }
  return result + rows.problem;
}

TEST(JsonRows, ReadsRowsInEveryArrangement) {
  const std::string two = "6-Nov-26,2.00,4.00,1.00,3.00,0\n5-Nov-26,1.25,2.50,1.00,2.00,10\n0";
  const ColumnNames places{"0", "1", "2", "3", "5", "4"};
  const ColumnNames nested{"day", "/bid/o", "/bid/h", "/bid/l", "/bid/c/0", "n"};
  const struct {
    const char* text;
    const char* path;
    ColumnNames names = kUsualNames;
  } cases[] = {
      {R"([{"date":"2026-11-05","OPEN":1.25,"high":"2.5","low":1,"close":2.0,"volume":1e1,"x":[]},
           {"date":"2026-11-06","open":2,"high":4,"low":1,"close":3,"volume":null}])",
       ""},
      {R"({"a b":{"~":[[0],[["2026-11-06",2,4,1,0,3],["2026-11-05",1.25,2.5,1,10.9,2]]]}})",
       "/a b/~0/1", places},
      {R"({"2026-11-05":{"open":"1.25","high":"2.5","low":"1","close":" 2 ","volume":10},
           "2026-11-06":{"open":2,"high":4,"low":1,"close":3}})",
       ""},
      {R"({"p":{"close":[2,3],"date":["2026-11-05","2026-11-06"],"open":[1.25,2],"high":[2.5,4],
           "low":[1,1],"volume":[10]}})",
       "/p"},
      {R"([{"day":"5-Nov-26","bid":{"o":1.25,"h":2.5,"l":1,"c":[2]},"n":10},
           {"day":"6-Nov-26","bid":{"o":2,"h":4,"l":1,"c":[3]},"n":"N/A"}])",
       "", nested},
      {R"({"bid":{"o":[1.25,2],"h":[2.5,4],"l":[1,1],"c":[[2,3]]},"day":["5-Nov-26","6-Nov-26"],
           "n":[10,0]})",
       "", nested},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(summary(c.text, c.path, c.names), two) << c.text;
  }
  EXPECT_EQ(
      summary(R"({"date":"2026-11-05","open":1,"high":2,"low":1,"close":2})", "", kUsualNames),
      "5-Nov-26,1.00,2.00,1.00,2.00,0\n0");
}

TEST(JsonRows, SaysWhatIsWrong) {
  const std::string deep = std::string(100'000, '[');
  const struct {
    std::string text, path, expected;
  } cases[] = {
      {R"([{"date":1,"close":1},{"date":"2026-11-05","close":{}},[],7,
           {"date":"2026-11-05","open":-1,"close":1}])",
       "",
       "5; row 1: Date \"1\" is not understood; row 2: Open is missing; row 3: Date is missing; "
       "row 4: Date is missing; row 5: Open \"-1\" is not understoodno usable line, 5 bad ones"},
      {R"({"close":[1],"date":[]})", "", "1; row 1: Date is missingno usable line, 1 bad ones"},
      {"null", "", "0no usable line, 0 bad ones"},
      {R"({"a":[]})", "/a", "0no usable line, 0 bad ones"},
      {"\xff", "", "0not JSON"},
      {deep + std::string(100'000, ']'), "", "0no row has a field Close"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(summary(c.text, c.path, kUsualNames), c.expected) << c.text.substr(0, 100);
  }
}

}  // namespace
}  // namespace quintara::quotes
