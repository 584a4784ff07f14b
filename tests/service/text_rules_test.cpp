#include <gmock/gmock.h>

#include "service/desk/replies.hpp"
#include "service/http/host_header.hpp"
#include "service/prices/day_forms.hpp"
#include "service/prices/json_rows.hpp"
#include "service/prices/price_file.hpp"
#include "service/system/repeats.hpp"
#include "service/text/secret.hpp"
#include "transfer/this_computer.hpp"

namespace quintara::quotes {

std::optional<Day> dayOf(std::string_view text, DayForms forms = {}) {
  const auto moment = MomentReader(forms.utcOffsetHours).read(text);
  return moment ? moment->dayIn(forms.order) : std::nullopt;
}

TEST(TextRules, DatesAreWrittenForTablesAndQuotes) {
  std::string shown;
  for (const char* text : {"2026-11-05", "5-nOV-26", "29-Feb-2000", "1-Jan-70", "31-Dec-69"}) {
    const Day day = dayOf(text).value_or(Day{});
    shown += tableDate(day) + " " + quoteDate(day) + " ";
  }
  EXPECT_EQ(shown,
            "5-Nov-26 11/5/2026 5-Nov-26 11/5/2026 29-Feb-00 2/29/2000 1-Jan-70 1/1/1970 "
            "31-Dec-69 12/31/2069 ");
}

TEST(TextRules, DatesAreReadUnlessTheyAreUnclear) {
  const auto isFifth = [](const char* text, DayForms forms = {}) {
    return dayOf(text, forms) == makeDay(2026, 11, 5);
  };
  for (const char* text : {"20261105",
                           "2026/11/05",
                           "2026-11-05T23:00:00Z",
                           "2026-11-05 00:00",
                           "5.11.2026",
                           "5 Nov 2026",
                           "05-November-2026",
                           "Nov 5, 2026",
                           "NOV-05-2026, 16:00",
                           "1793836800",
                           "1793923199999",
                           "1793836800.25",
                           "2026-11-05",
                           "2026-11-05 16:00:00.123-05:00",
                           "20261105T160000Z",
                           "202611051600",
                           "Thu, 5 Nov 2026 4:00 PM EST",
                           "mar. 5 nov. 2026",
                           "Do 05.11.2026",
                           "5 de noviembre de 2026",
                           "5. listopadu 2026",
                           "2026年11月5日",
                           "2026/11/05(木)",
                           "2026. 11. 05.",
                           "5 ноября 2026 г.",
                           "2026-Nov-05",
                           "05NOV2026",
                           "Nov 5th, 2026",
                           "2026-11-05+01:00",
                           "1793836800000000"}) {
    EXPECT_TRUE(isFifth(text, {DayOrder::DayFirst, 0})) << text;
  }
  for (const char* text : {"11/05/2026",
                           "05-11-2026",
                           "2026-11-05 x",
                           "20261301",
                           "17938368000000",
                           "1793836800.x",
                           "5 Nov 126",
                           "",
                           "-1",
                           "T",
                           "Nov",
                           "2026-02-29",
                           "1899-12-31",
                           "2100-01-01",
                           "2026-257-05",
                           "0-Jan-26",
                           "5-Noc-26",
                           "2026-11",
                           "2026-11-05x",
                           "5-Jui-2026",
                           "2026-11-05 25:00",
                           "2026-11-05 16",
                           "16:00:05",
                           "12.50",
                           "1.234.567"}) {
    EXPECT_FALSE(dayOf(text)) << text;
  }
  EXPECT_TRUE(isFifth("11/5/2026", {DayOrder::MonthFirst, 0}));
  EXPECT_TRUE(isFifth("05-11-26 4:00", {DayOrder::DayFirst, 0}));
  EXPECT_TRUE(isFifth("26/11/05", {DayOrder::YearFirst, 0}));
  EXPECT_TRUE(isFifth("5.11.2026", {DayOrder::MonthFirst, 0}) && isFifth("05.11.26"));
  EXPECT_TRUE(isFifth("1793833200", {DayOrder::Unclear, 1}));
  EXPECT_TRUE(isFifth("1793923200", {DayOrder::Unclear, -1}));
}

TEST(TextRules, TimesOfDayAreRead) {
  MomentReader reader;
  for (const auto& [text, second] :
       std::initializer_list<std::pair<const char*, int>>{{"16:30", 59400},
                                                          {"4:30 PM", 59400},
                                                          {"04:30:00 p. m.", 59400},
                                                          {"16h30", 59400},
                                                          {"163000", 59400},
                                                          {"1630", 59400},
                                                          {"下午 4:30", 59400},
                                                          {"16.30.00", 59400},
                                                          {"12:00:00 AM", 0},
                                                          {"12 PM", 43200},
                                                          {"0", 0},
                                                          {"24:00", 86400},
                                                          {"930", 34200}}) {
    EXPECT_EQ(reader.readTime(text), second) << text;
  }
  for (const char* text : {"", "16", "25:00", "12:60", "13:00 AM", "2026-11-05", "x"}) {
    EXPECT_FALSE(reader.readTime(text)) << text;
  }
}

Price price(const char* text) { return parseDecimal(text, true)->price().value().value; }

TEST(TextRules, PricesGoOutAsTheyCameInUpToTenDigits) {
  std::string shown;
  for (const char* text :
       {"12,5", "1.092660", "0.00001234", ".5", "007.", "150000000000", "1e-5", "1.5E+3", "0e9",
        "12345678.94", "0.0012345678901", "9.9999999995", "1.00000000049999999999999999999"}) {
    shown += price(text).text() + " ";
  }
  EXPECT_EQ(shown,
            "12.50 1.09266 0.00001234 0.50 7.00 150000000000.00 0.00001 1500.00 0.00 "
            "12345678.94 0.00123456789 10.00 1.00 ");
  for (const char* text : {"1.234,5", "1,234,5", "-1", "+1", "nan", "0x10", ".", "", "1 000", "1e",
                           "1e+-5", "1e5x", "e5", "1e99999999999", "1f5"}) {
    EXPECT_FALSE(parseDecimal(text, true)) << text;
  }
  EXPECT_FALSE(parseDecimal("12,5", false));
  for (const char* text : {"1000000000000000", "999999999999999.9", "1e-19", "1e300"}) {
    EXPECT_FALSE(parseDecimal(text, true)->price()) << text;
  }
}

TEST(TextRules, PricesAreComparedAndTakenFromEachOtherExactly) {
  const char* const kAscending[] = {"0", "1e-18", "0.99999", "1", "1.000000001", "2", "9e14"};
  for (std::size_t i = 1; i < std::size(kAscending); ++i) {
    EXPECT_LT(price(kAscending[i - 1]), price(kAscending[i]));
  }
  EXPECT_EQ(price("1.10"), Price(11, 1));
  for (const auto& [last, before, change] :
       {std::tuple{"12.40", "12.5", "-0.10"},
        {"1.09266", "1.1", "-0.00734"},
        {"7", "7.00", "0.00"},
        {"900000000000000", "0.000000000000000001", "+899999999999999.999999999999999999"}}) {
    EXPECT_EQ(changeText(price(last), price(before)), change);
  }
}

TEST(TextRules, VolumesEndAtSixtyFourBits) {
  const std::int64_t most = std::numeric_limits<std::int64_t>::max();
  for (const auto& [text, whole, cut] : {std::tuple{"1000.9", std::int64_t{1000}, false},
                                         {"1.5e3", 1500, false},
                                         {"9e-9", 0, false},
                                         {"9223372036854775807", most, false},
                                         {"9223372036854775808", most, true},
                                         {"1e400", most, true}}) {
    const auto kept = parseDecimal(text, false)->whole();
    EXPECT_EQ(std::tie(kept.value, kept.cut), std::tie(whole, cut)) << text;
  }
  EXPECT_EQ(sumOfVolumes(most, 1), most);
}

TEST(TextRules, OnlyThisComputerIsLoopback) {
  for (const char* host : {"127.0.0.1", "127.0.0.1:8470", "LocalHost:1", "127.9.8.7", "[::1]:80"}) {
    EXPECT_TRUE(namesThisComputer(host)) << host;
  }
  for (const char* host : {"0.0.0.0", "[::1]", "[::]", "[::ffff:127.0.0.9]", "[::ffff:7f00:1]",
                           "localhost.", "a.LocalHost", "127.1.1.1"}) {
    EXPECT_TRUE(leadsToThisComputer(host)) << host;
  }
  for (const char* host :
       {"", "127.0.0.1.example.com", "localhost.example.com:80", "128.0.0.1:80", "localhost:80:80",
        "[::2]", "localhost:x", "[::ffff:8.8.8.8]", "[fe80::1]", "alocalhost"}) {
    EXPECT_FALSE(namesThisComputer(host) || leadsToThisComputer(host)) << host;
  }
}

TEST(TextRules, AKeyIsHiddenHoweverItsCharactersAreWritten) {
  const Secret key("Ab/\"<\\+9");
  for (const std::string spelling :
       {R"(aB/"<\+9)", "Ab%2F%22%3c%5C%2B9", "%41b%252f%2522<%25255C%2b%39",
        R"(Ab\/\"\u003C\\\u002b9)", R"(Ab/\x22<\x5c\x2b9)", R"(Ab\x5c/\x5c"<\x5c\x5c+9)",
        "Ab&#47;&quot;&LT;&#x5C;&#043;9", R"(\u0041\u0062%2f&#34;<\%2b\9)"}) {
    EXPECT_EQ(key.hiddenIn("x=" + spelling + ";"), "x=***;");
  }
  EXPECT_EQ(Secret("abab").hiddenIn("ababab-aba"), "***-aba");
  EXPECT_EQ(Secret("abcd").hiddenIn("..abcd..", 3), "..*");
}

const std::string kHeader = "Date,Open,High,Low,Close,Volume\n";
const std::string kTwo = "6-Nov-26,2.00,4.00,1.00,3.00,0\n5-Nov-26,1.25,2.50,1.00,2.00,1000\n0";

// The bars newest first, then the number of bad rows, then why there are no bars.
std::string summary(const PriceRows& rows) {
  const std::string table = tableText(rows.bars, Day::min());
  return table.substr(kHeader.size()) + std::to_string(rows.badLines) + rows.problem;
}
std::string ofFile(const std::string& text) { return summary(parsePriceFile(text)); }
std::string ofJson(const std::string& text, const std::string& path = "",
                   const ColumnNames& names = kUsualNames) {
  return summary(parseJsonRows(text, path, {names, {}, nullptr, "", DayOrder::Unclear}));
}

TEST(PriceFile, ReadsWhatBrokersExport) {
  for (const std::string& text :
       {kHeader + "2026-11-06,2,4,1,3,N/A\n5-Nov-26,1.25,2.5,1,2,\"1,000\"\n",
        kHeader + "5-Nov-26,1.25,2.5,1,2,1000.5\n6-Nov-2026,2,4,1,3",
        std::string("\xEF\xBB\xBF\r\n\"close\",\"Adj Close\",LOW,\"High\", open ,DATE,Volume\r\n"
                    "\"2.0\",\"1,000\",1,2.5,1.25,\"2026-11-05\",1000\r\n\r\n3,,1,4,2,6-Nov-26"),
        std::string("Date;Open;High;Low;Close;Volume\n2026-11-06;2;4;1;3;Null\n"
                    "2026-11-05;1,25;2,5;1;2,0;1000,0\n")}) {
    EXPECT_EQ(ofFile(text), kTwo) << text;
  }
}

TEST(PriceFile, LeavesOutAndCountsBadLines) {
  for (const char* bad :
       {"2026-11-05,5,5,5,5,5", "2026-11-06,0,2,0,2,3", "2026-11-06,3,2,1,1,3",
        "2026-11-06,1,2,1.5,2,3", "2026-11-06,1,2,1,3,3", "2026-11-06,1,1e15,1,2,3",
        "2026-11-06,1,2,1e-19,2,3", "2026-11-06,\"1,2,1,2,3", "2026-11-06,1,2,1,2,-3",
        "2026-11-06,1,2,1", "2026-11-06,1,2,1,2,\"12,34\"", "2026-11-06,1,2,1,2,\"1,2345678\""}) {
    EXPECT_EQ(ofFile(kHeader + "2026-11-05,1.0,2,1,2,3\n" + bad),
              "5-Nov-26,1.00,2.00,1.00,2.00,3\n1")
        << bad;
  }
  for (const char* remark :
       {"rubbish", ",,,,,", "# 2026-11-06,1,2,1,2,3", "\"As is,\",no,warranty"}) {
    EXPECT_EQ(ofFile(kHeader + "2026-11-05,1,2,1,2,3\n" + remark),
              "5-Nov-26,1.00,2.00,1.00,2.00,3\n0");
  }
  EXPECT_EQ(ofFile(""), "0the file is empty");
  EXPECT_EQ(ofFile("Date,Open,High,Close\n2026-11-05,1,2,2\n"),
            "0no column Low in line 1: Date,Open,High,Close");
  EXPECT_EQ(ofFile(kHeader + std::string("\0,1\nx\n", 6)),
            "2no usable line, 2 bad ones, line 2: Date \"\\x00\" is not understood");
}

TEST(JsonRows, ReadsRowsInEveryArrangement) {
  EXPECT_EQ(kTwo, ofJson(R"([{"date":"2026-11-05","OPEN":1.25,"high":"2.5","low":1,"close":" 2 ",
                  "volume":1e3,"x":[]}, {"date":"6-Nov-26","open":2,"high":4,"low":1,"close":3}])"));
  EXPECT_EQ(kTwo,
            ofJson(R"({"a b":{"~":[0,[["6-Nov-26",2,4,1,0,3],["5-Nov-26",1.25,2.5,1,1000,2]]]}})",
                   "/a b/~0/1", {"0", "1", "2", "3", "5", "4"}));
  EXPECT_EQ(kTwo, ofJson(R"({"2026-11-05":{"open":1.25,"high":2.5,"low":1,"close":2,"volume":1000},
                       "2026-11-06":{"open":2,"high":4,"low":1,"close":3,"volume":null}})"));
  EXPECT_EQ(kTwo, ofJson(R"({"close":[2,3],"date":["2026-11-05","2026-11-06"],"open":[1.25,2],
                       "high":[2.5,4],"low":[1,1],"volume":[1000]})"));
  EXPECT_EQ(kTwo, ofJson(R"([{"day":"5-Nov-26","bid":{"o":1.25,"h":2.5,"l":1,"c":[2]},"n":1000},
                       {"day":"6-Nov-26","bid":{"o":2,"h":4,"l":1,"c":[3]},"n":"N/A"}])",
                         "", {"day", "/bid/o", "/bid/h", "/bid/l", "/bid/c/0", "n"}));
  EXPECT_EQ(kTwo, ofJson("{\"date\":\"6.11.26\",\"open\":2,\"high\":4,\"low\":1,\"close\":3}\r\n\n"
                         "{\"date\":\"2026-11-05\",\"open\":1.25,\"high\":2.5,\"low\":1,"
                         "\"close\":2,\"volume\":1000}\n"));
}

TEST(JsonRows, TakesNumbersAsTheyAreWritten) {
  EXPECT_EQ(ofJson(R"([{"date":20261105,"open":1.10,"high":1.092660001E+5,"low":1.25e-5,
                        "close":0.30000000000000004,"volume":18446744073709551616}])",
                   ""),
            "5-Nov-26,1.10,109266.0001,0.0000125,0.30,9223372036854775807\n0");
}

TEST(JsonRows, SaysWhatIsWrong) {
  const PriceRows rows = parseJsonRows(
      R"([{"date":1},{"date":"2026-11-05","close":{}},7,{"date":"5-Nov-26","open":-1}])", "", {});
  EXPECT_THAT(
      rows.complaints,
      testing::ElementsAre("row 1: Date \"1\" is not understood", "row 2: Open is missing",
                           "row 3: Date is missing", "row 4: Open \"-1\" is not understood"));
  for (const auto& [text, problem] : std::initializer_list<std::pair<std::string, const char*>>{
           {R"({"p":{"close":[1],"date":[]}})",
            "1no usable row, 1 bad ones, row 1: Date is missing"},
           {"\xff", "0not JSON"},
           {std::string(65, '[') + std::string(65, ']'), "0nested too deeply"},
           {R"({"p":["[[{\"[",)" + std::string(62, '[') + std::string(62, ']') + "]}",
            "0no row has a field Close"},
           {R"({"p":[],"Note":"limit"})", "0no rows but a message"},
           {R"({"p":[],"note":" ","message":7,"meta":"x"})", "0no rows"},
           {"[]", "0no rows"}}) {
    EXPECT_EQ(ofJson(text, "/p"), problem) << text;
  }
}

TEST(Repeats, ComeOnceAMinuteWithACount) {
  Repeats repeats;
  const Repeats::Time start{};
  std::string written;
  const auto say = [&](const std::string& text, int second) {
    for (const auto& line : repeats.passing(text, start + std::chrono::seconds{second})) {
      written += line + "|";
    }
  };
  for (int i = 0; i < 60; ++i) {
    say("bad row", i);
  }
  say("other", 59);
  say("bad row", 60);
  say("bad row", 61);
  EXPECT_EQ(written, "bad row|other|bad row (59 times more within a minute)|bad row|");
  written.clear();
  for (int i = 0; i < 10'000; ++i) {
    say(std::to_string(i), 62);
  }
  EXPECT_EQ(std::count(written.begin(), written.end(), '|'), Repeats::kMostTexts - 1);
  EXPECT_THAT(repeats.countsAt(Repeats::Time::max()),
              testing::Contains(testing::HasSubstr("are left out (9501 times more within a")));
}

}  // namespace quintara::quotes
