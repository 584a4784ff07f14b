#include <gtest/gtest.h>

#include "service/day_forms.hpp"
#include "service/loopback.hpp"
#include "service/price.hpp"
#include "service/secret.hpp"
#include "service/url_parts.hpp"

namespace quintara::quotes {
namespace {

TEST(TextRules, DatesOfPriceFilesAreReadAndWritten) {
  std::string shown;
  for (const char* text : {"2026-11-05", "5-nOV-26", "29-Feb-2000", "1-Jan-70", "31-Dec-69"}) {
    const Day day = parseDay(text).value_or(Day{});
    shown += tableDate(day) + " " + quoteDate(day) + " ";
  }
  EXPECT_EQ(shown,
            "5-Nov-26 11/5/2026 5-Nov-26 11/5/2026 29-Feb-00 2/29/2000 1-Jan-70 1/1/1970 "
            "31-Dec-69 12/31/2069 ");
  for (const char* text :
       {"2026-02-29", "1899-12-31", "2100-01-01", "2026-13-01", "2026-257-05", "2026-01-257",
        "0-Jan-26", "5-Noc-26", "5-Nov-126", "2026-11", "2026-11-05x", "11/05/2026", ""}) {
    EXPECT_FALSE(parseDay(text)) << text;
  }
}

TEST(TextRules, DatesOfProvidersAreReadUnlessTheyAreUnclear) {
  const auto isFifth = [](const char* text, DayForms forms = {}) {
    return parseAnyDay(text, forms) == makeDay(2026, 11, 5);
  };
  for (const char* text :
       {"20261105", "2026/11/05", "2026-11-05T23:00:00Z", "2026-11-05 00:00", "5.11.2026",
        "05.11.26", "5 Nov 2026", "05-November-2026", "Nov 5, 2026", "NOV-05-2026, 16:00",
        "1793836800", "1793923199999", "1793836800.25", "2026-11-05"}) {
    EXPECT_TRUE(isFifth(text)) << text;
  }
  for (const char* text :
       {"11/05/2026", "05-11-2026", "2026-11-05 x", "2026-13-05", "20261301", "Nov", "179383680",
        "17938368000000", "1793836800.x", "5 Nov 126", "", "-1", "T"}) {
    EXPECT_FALSE(isFifth(text)) << text;
  }
  EXPECT_TRUE(isFifth("11/5/2026", {DayOrder::MonthFirst, 0}));
  EXPECT_TRUE(isFifth("05-11-26 4:00", {DayOrder::DayFirst, 0}));
  EXPECT_TRUE(isFifth("5.11.2026", {DayOrder::MonthFirst, 0}));
  EXPECT_TRUE(isFifth("1793833200", {DayOrder::Unclear, 1}));
  EXPECT_TRUE(isFifth("1793923200", {DayOrder::Unclear, -1}));
}

TEST(TextRules, PricesAreExactDecimalsRoundedOnce) {
  std::string shown;
  for (const char* text : {"12.5", "12,5", "12.345", "12.34499", "0.12344", "0.12345", "0.99995",
                           ".5", "007.", "1000000000"}) {
    shown += priceText(parsePrice(text, true).value_or(0)) + " ";
  }
  EXPECT_EQ(shown, "12.50 12.50 12.35 12.34 0.1234 0.1235 1.00 0.5000 7.00 1000000000.00 ");
  for (const char* text : {"1000000000.0001", "99999999999999999999999", "1.234,5", "1,234,5", "-1",
                           "+1", "1e3", "nan", "0x10", ".", "", "1 000"}) {
    EXPECT_FALSE(parsePrice(text, true)) << text;
  }
  EXPECT_FALSE(parsePrice("12,5", false));
  EXPECT_EQ(changeText(123'960, 125'000), "-0.10");
  EXPECT_EQ(changeText(125'000, 125'000) + changeText(9'999, 10'100), "0.00-0.0101");
}

TEST(TextRules, OnlyThisComputerIsLoopback) {
  for (const char* host : {"127.0.0.1", "127.0.0.1:8470", "LocalHost:1", "127.9.8.7", "[::1]:80"}) {
    EXPECT_TRUE(namesLoopback(host)) << host;
  }
  for (const char* host : {"", "127.0.0.1.example.com", "localhost.example.com:80", "128.0.0.1:80",
                           "localhost:80:80", "[::2]", "localhost:x"}) {
    EXPECT_FALSE(namesLoopback(host)) << host;
  }
  for (const char* host : {"0.0.0.0", "[::1]", "[::]", "[::ffff:127.0.0.9]", "[::ffff:7f00:1]",
                           "localhost.", "a.LocalHost", "127.1.1.1"}) {
    EXPECT_TRUE(leadsToThisComputer(host)) << host;
  }
  for (const char* host : {"[::ffff:8.8.8.8]", "[fe80::1]", "alocalhost", "localhost.example"}) {
    EXPECT_FALSE(leadsToThisComputer(host)) << host;
  }
}

TEST(TextRules, OnlyTheSameServerMayLearnAKey) {
  const auto same = [](const char* from, const char* to) {
    return leadSameWay(*urlParts(from), *urlParts(to));
  };
  EXPECT_TRUE(same("http://a.example/x", "https://A.Example/y"));
  EXPECT_FALSE(same("https://a.example/", "http://a.example/"));
  EXPECT_FALSE(same("http://a.example/", "https://a.example:8443/"));
}

TEST(TextRules, AKeyIsHiddenHoweverItsCharactersAreWritten) {
  const Secret key("Ab/\"<\\+9");
  for (const char* spelling :
       {R"(aB/"<\+9)", "Ab%2F%22%3c%5C%2B9", "%41b%252f%2522<%25255C%2b%39",
        R"(Ab\/\"\u003C\\\u002b9)", R"(Ab/\x22<\x5c\x2b9)", R"(Ab\x5c/\x5c"<\x5c\x5c+9)",
        "Ab&#47;&quot;&LT;&#x5C;&#043;9", R"(\u0041\u0062%2f&#34;<\%2b\9)"}) {
    EXPECT_EQ(key.hiddenIn("x=" + std::string(spelling) + ";"), "x=***;") << spelling;
  }
  EXPECT_EQ(Secret("abab").hiddenIn("ababab-aba"), "***-aba");
  EXPECT_EQ(Secret("abcd").hiddenIn("..abcd..", 3), "..*");
}

}  // namespace
}  // namespace quintara::quotes
