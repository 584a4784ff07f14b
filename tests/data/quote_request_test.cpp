#include "data/quote_request.hpp"

#include <gmock/gmock.h>

#include <tuple>

#include "support/fakes.hpp"
#include "support/wire.hpp"

namespace quintara::test {
namespace {

using std::chrono::year;
using testing::ElementsAre;

Date date(int y, unsigned m, unsigned d) {
  return year{y} / std::chrono::month{m} / std::chrono::day{d};
}

TEST(StartDate, FollowsIntervalAndSpan) {
  const std::tuple<std::int16_t, std::int16_t, Date, Date> kCases[] = {
      {0, 0, date(2026, 11, 16), date(2026, 5, 18)}, {0, 1, date(2026, 11, 16), date(2025, 11, 16)},
      {0, 2, date(2026, 11, 16), date(2025, 5, 18)}, {0, 3, date(2026, 11, 16), date(2024, 11, 16)},
      {1, 3, date(2026, 11, 16), date(2022, 8, 29)}, {2, 0, date(2026, 11, 16), date(2016, 11, 16)},
      {2, 0, date(2028, 2, 29), date(2018, 2, 28)},
  };
  for (const auto& [interval, span, today, start] : kCases) {
    EXPECT_EQ(startDate(interval, span, today), start) << interval << ' ' << span;
  }
  EXPECT_THROW(startDate(3, 0, date(2026, 11, 16)), RuntimeError);
  EXPECT_THROW(startDate(0, 4, date(2026, 11, 16)), RuntimeError);
  EXPECT_THROW(startDate(0, -1, date(2026, 11, 16)), RuntimeError);
}

TEST(QuoteRow, HasTheTablesColumnsAndTodaysDate) {
  const std::tuple<const char*, Date, const char*> kCases[] = {
      {"\"X\",12.50,\"d\",\"t\",+0.10,12.40,12.60,12.30,900", date(2026, 11, 5),
       "5-Nov-26,12.40,12.60,12.30,12.50,900"},
      {"\"X\",12.50,\"d\",\"t\",+0.10,N/A,12.60,12.30,N/A", date(2026, 11, 16),
       "16-Nov-26,N/A,12.60,12.30,12.50,0"},
      {"\"X\",12.50,\"d\",\"t\",+0.10,0.00,12.60,12.30,7\r\n", date(2005, 3, 16),
       "16-Mar-05,N/A,12.60,12.30,12.50,7\r\n"},
  };
  for (const auto& [reply, today, row] : kCases) EXPECT_EQ(quoteRow(reply, today), row);
  EXPECT_THROW(quoteRow("a,b,c,d,e,f,g,h", date(2026, 11, 16)), RuntimeError);
}

struct Download : testing::Test {
  bool fetch() { return GetHistoricalData(state, {platform, platform, {"h:1", "q:2"}}); }

  FakePlatform platform;
  ChartState state;
};

TEST_F(Download, AsksBothHostsWithTheTickerAsTyped) {
  state.sTicker = "xyZ ^";
  EXPECT_TRUE(fetch());
  EXPECT_THAT(platform.log,
              ElementsAre("get http://h:1/table.csv?s=xyZ ^&a=5&b=18&c=2026&d=11&e=16&f=2026&g=d"
                          "&q=q&y=0&z=xyZ ^&x=.csv",
                          "get http://q:2/d/quotes.csv?s=xyZ ^&f=sl1d1t1c1ohgv&e=.csv"));
}

TEST_F(Download, NormalisesRowsForTheUsersSeparator) {
  platform.table = [] { return "Date,Open\n14-Nov-02,12.50,12.60,12.30,12.55,100\n"; };
  platform.quote = [] { return quote("N/A"); };
  const ScopedSeparator point(".");
  EXPECT_TRUE(fetch());
  EXPECT_THAT(state.sRows, ElementsAre("16-Nov-26@N/A@61.75@59.50@60.50@123456789\r\n",
                                       "14-Nov-02@12.50@12.60@12.30@12.55@100", ""));
  sDecimalSep = ",";
  EXPECT_TRUE(fetch());
  EXPECT_THAT(state.sRows, ElementsAre("16-Nov-26@N/A@61,75@59,50@60,50@123456789\r\n",
                                       "14-Nov-02@12,50@12,60@12,30@12,55@100", ""));
}

TEST_F(Download, FailsWithoutAWordAndKeepsOldRowsUntilBothRepliesAreIn) {
  const auto broken = []() -> std::string { throw RuntimeError(ErrorKind::TransferFailed); };
  const std::tuple<const char*, std::function<std::string()>, std::function<std::string()>, bool>
      kCases[] = {
          {"no table", broken, [] { return quote(); }, true},
          {"no quote", [] { return table(3); }, broken, true},
          {"short quote", [] { return table(3); }, [] { return std::string("a,b"); }, true},
          {"header alone", [] { return table(0); }, [] { return quote(); }, false},
          {"empty table", [] { return std::string(); }, [] { return quote(); }, false},
      };
  for (const auto& [what, tableReply, quoteReply, keepsRows] : kCases) {
    platform.table = tableReply;
    platform.quote = quoteReply;
    state.sRows = {"old"};
    EXPECT_FALSE(fetch()) << what;
    EXPECT_EQ(state.sRows.front() == "old", keepsRows) << what;
  }
}

}  // namespace
}  // namespace quintara::test
