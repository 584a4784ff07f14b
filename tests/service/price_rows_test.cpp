#include <gmock/gmock.h>

#include "service/json_rows.hpp"
#include "service/price_file.hpp"
#include "service/replies.hpp"

namespace quintara::quotes {
namespace {

const std::string kHeader = "Date,Open,High,Low,Close,Volume\n";
const std::string kTwo = "6-Nov-26,2.00,4.00,1.00,3.00,0\n5-Nov-26,1.25,2.50,1.00,2.00,10\n0";

// The bars newest first, then the number of bad rows, then why there are no bars.
std::string summary(const PriceRows& rows) {
  const std::string table = tableText(rows.bars, Day::min());
  return table.substr(kHeader.size()) + std::to_string(rows.badLines) + rows.problem;
}
std::string ofFile(std::string_view text) { return summary(parsePriceFile(text)); }
std::string ofJson(const std::string& text, const std::string& path = "",
                   const ColumnNames& names = kUsualNames) {
  return summary(parseJsonRows(text, path, {names, parseDay, nullptr}));
}

TEST(PriceFile, ReadsWhatBrokersExport) {
  for (const std::string& text :
       {kHeader + "2026-11-06,2,4,1,3,N/A\n5-Nov-26,1.25,2.5,1,2,10\n",
        kHeader + "2026-11-06,2,4,1,3,Null\n5-Nov-26,1.25,2.5,1,2,10.5\n",
        kHeader + "5-Nov-26,1.25,2.5,1,2,10\n6-Nov-2026,2,4,1,3",
        std::string("\xEF\xBB\xBF\r\n\"close\",\"Adj Close\",LOW,\"High\", open ,DATE,Volume\r\n"
                    "\"2.0\",\"1,000\",1,2.5,1.25,\"2026-11-05\",10\r\n\r\n3,,1,4,2,6-Nov-26\r\n"),
        std::string("Date;Open;High;Low;Close;Volume\n2026-11-06;2;4;1;3;-\n"
                    "2026-11-05;1,25;2.5;1;2,0;10,0\n")}) {
    EXPECT_EQ(ofFile(text), kTwo) << text;
  }
  EXPECT_EQ(ofFile(kHeader + "2026-11-05,1,2,1,2,\"1,234,567\"\n"),
            "5-Nov-26,1.00,2.00,1.00,2.00,1234567\n0");
}

TEST(PriceFile, LeavesOutAndCountsBadLines) {
  for (const char* bad :
       {"2026-11-05,5,5,5,5,5", "rubbish", ",,,,,", "2026-11-06,0,2,0,2,3", "2026-11-06,3,2,1,1,3",
        "2026-11-06,1,2,1.5,2,3", "2026-11-06,1,2,1,3,3", "2026-11-06,1,2000000000,1,2,3",
        "2026-11-06,nan,2,1,2,3", "2026-11-06,1,2,0.00001,2,3", "2026-11-31,1,2,1,2,3",
        "2026-11-06,\"1,2,1,2,3", "2026-11-06,1,2,1,2,-3", "2026-11-06,1,2,1",
        "2026-11-06,1,2,1,2,\"12,34\"", "2026-11-06,1,2,1,2,\"1,2345678\""}) {
    EXPECT_EQ(ofFile(kHeader + "2026-11-05,1,2,1,2,3\n" + bad), "5-Nov-26,1.00,2.00,1.00,2.00,3\n1")
        << bad;
  }
  EXPECT_EQ(ofFile(""), "0no column Date, Open, High, Low, Close");
  EXPECT_EQ(ofFile("Date,Open,High,Close\n2026-11-05,1,2,2\n"), "0no column Low");
  EXPECT_EQ(ofFile(kHeader + std::string("\0,1\nx\n", 6)), "2no usable line, 2 bad ones");
}

TEST(JsonRows, ReadsRowsInEveryArrangement) {
  EXPECT_EQ(kTwo, ofJson(R"([{"date":"2026-11-05","OPEN":1.25,"high":"2.5","low":1,"close":2.0,
                        "volume":1e1,"x":[]},
                       {"date":"2026-11-06","open":2,"high":4,"low":1,"close":3,"volume":null}])"));
  EXPECT_EQ(kTwo,
            ofJson(R"({"a b":{"~":[0,[["2026-11-06",2,4,1,0,3],["2026-11-05",1.25,2.5,1,10,2]]]}})",
                   "/a b/~0/1", {"0", "1", "2", "3", "5", "4"}));
  EXPECT_EQ(
      ofJson(R"({"2026-11-05":{"open":"1.25","high":"2.5","low":"1","close":" 2 ","volume":10},
                       "2026-11-06":{"open":2,"high":4,"low":1,"close":3}})"),
      kTwo);
  EXPECT_EQ(kTwo, ofJson(R"({"close":[2,3],"date":["2026-11-05","2026-11-06"],"open":[1.25,2],
                       "high":[2.5,4],"low":[1,1],"volume":[10]})"));
  const ColumnNames nested{"day", "/bid/o", "/bid/h", "/bid/l", "/bid/c/0", "n"};
  EXPECT_EQ(kTwo, ofJson(R"([{"day":"5-Nov-26","bid":{"o":1.25,"h":2.5,"l":1,"c":[2]},"n":10},
                       {"day":"6-Nov-26","bid":{"o":2,"h":4,"l":1,"c":[3]},"n":"N/A"}])",
                         "", nested));
  EXPECT_EQ(kTwo, ofJson(R"({"bid":{"o":[1.25,2],"h":[2.5,4],"l":[1,1],"c":[[2,3]]},
                       "day":["5-Nov-26","6-Nov-26"],"n":[10,0]})",
                         "", nested));
  EXPECT_EQ(ofJson(R"({"date":"2026-11-05","open":1,"high":2,"low":1,"close":2})"),
            "5-Nov-26,1.00,2.00,1.00,2.00,0\n0");
}

TEST(JsonRows, SaysWhatIsWrong) {
  EXPECT_THAT(parseJsonRows(R"([{"date":1},{"date":"2026-11-05","close":{}},[],7,
                                {"date":"2026-11-05","open":-1,"close":1}])",
                            "", {})
                  .complaints,
              testing::ElementsAre("row 1: Date \"1\" is not understood", "row 2: Open is missing",
                                   "row 3: Date is missing", "row 4: Date is missing",
                                   "row 5: Open \"-1\" is not understood"));
  EXPECT_EQ(ofJson(R"({"close":[1],"date":[]})"), "1no usable line, 1 bad ones");
  EXPECT_EQ(ofJson("null") + ofJson("[]"),
            "0no usable line, 0 bad ones0no usable line, 0 bad ones");
  EXPECT_EQ(ofJson("\xff"), "0not JSON");
  EXPECT_EQ(ofJson(std::string(65, '[') + std::string(65, ']')), "0nested too deeply");
  EXPECT_EQ(ofJson(std::string(64, '[') + R"("[[{\"[")" + std::string(64, ']')),
            "0no row has a field Close");
  for (const char* text :
       {R"({"p":[],"Note":"limit"})", R"({"p":null,"error":{"Message":"limit"}})",
        R"({"p":{},"INFORMATION":"x"})", R"({"p":[],"error":"","detail":"x"})"}) {
    EXPECT_EQ(ofJson(text, "/p"), "0no rows but a message") << text;
  }
  for (const char* text : {"{}", "[]", "null", R"({"p":[],"note":" ","error":null,"message":7})",
                           R"({"p":[],"meta":"x"})"}) {
    EXPECT_EQ(ofJson(text, "/p"), "0no usable line, 0 bad ones") << text;
  }
}

}  // namespace
}  // namespace quintara::quotes
