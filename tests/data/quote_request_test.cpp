#include "data/quote_request.hpp"

#include <gmock/gmock.h>

#include <tuple>

#include "support/fakes.hpp"

namespace quintara::test {
namespace {

using std::chrono::year;
using testing::ElementsAre;

constexpr Date kMonday = year{2026} / 11 / 16;

TEST(StartDate, FollowsIntervalAndSpan) {
  const std::tuple<int, int, Date> kCases[] = {
      {0, 0, year{2026} / 5 / 18},  {0, 1, year{2025} / 11 / 16}, {0, 2, year{2025} / 5 / 18},
      {0, 3, year{2024} / 11 / 16}, {1, 3, year{2022} / 8 / 29},  {2, 0, year{2016} / 11 / 16}};
  const auto start = [](int interval, int span, Date today = kMonday) {
    return startDate(static_cast<std::int16_t>(interval), static_cast<std::int16_t>(span), today);
  };
  for (const auto& [interval, span, date] : kCases)
    EXPECT_EQ(start(interval, span), date) << interval << ' ' << span;
  EXPECT_EQ(start(2, 0, year{2028} / 2 / 29), year{2018} / 2 / 28);
  for (const auto& [interval, span] : {std::pair{3, 0}, {0, 4}, {0, -1}})
    EXPECT_THROW(start(interval, span), RuntimeError) << interval << ' ' << span;
}

TEST(QuoteRow, HasTheTablesColumnsAndTodaysDate) {
  const std::tuple<const char*, Date, const char*> kCases[] = {
      {"X,12.50,d,t,+0.10,12.40,12.60,12.30,900", year{2026} / 11 / 5,
       "5-Nov-26,12.40,12.60,12.30,12.50,900"},
      {"X,12.50,d,t,+0.10,N/A,12.60,12.30,N/A", kMonday, "16-Nov-26,N/A,12.60,12.30,12.50,0"},
      {"X,12.50,d,t,+0.10,0.00,12.60,12.30,7\r\n", year{2005} / 3 / 16,
       "16-Mar-05,N/A,12.60,12.30,12.50,7\r\n"},
  };
  for (const auto& [reply, today, row] : kCases) EXPECT_EQ(quoteRow(reply, today), row);
}

TEST(Download, AsksBothHostsForTheTickerAsTypedAndKeepsRowsInTheUsersForm) {
  FakePlatform platform;
  platform.table = [] { return "Date,Open\n14-Nov-02,12.50,12.60,12.30,12.55,100\n"; };
  platform.quote = [] { return quote("N/A"); };
  ChartState state;
  state.sTicker = "xyZ ^";
  const QuoteSource source{platform, platform, {"h:1", "q:2"}};
  EXPECT_TRUE(GetHistoricalData(state, source));
  EXPECT_THAT(platform.log,
              ElementsAre("get http://h:1/table.csv?s=xyZ ^&a=5&b=18&c=2026&d=11&e=16&f=2026&g=d"
                          "&q=q&y=0&z=xyZ ^&x=.csv",
                          "get http://q:2/d/quotes.csv?s=xyZ ^&f=sl1d1t1c1ohgv&e=.csv"));
  EXPECT_THAT(state.sRows, ElementsAre("16-Nov-26@N/A@61.75@59.50@60.50@123456789\r\n",
                                       "14-Nov-02@12.50@12.60@12.30@12.55@100", ""));
  const ScopedSeparator comma(",");
  EXPECT_TRUE(GetHistoricalData(state, source));
  EXPECT_EQ(state.sRows[1], "14-Nov-02@12,50@12,60@12,30@12,55@100");
  const std::pair<const char*, bool> kTables[] = {{"", false},
                                                  {"Date", false},
                                                  {"Date\n", false},
                                                  {"Date\n\nrow\n", false},
                                                  {"Date\nrow", true}};
  for (const auto& [table, usable] : kTables) {
    platform.table = [reply = table] { return reply; };
    EXPECT_EQ(GetHistoricalData(state, source), usable) << table;
  }
}

}  // namespace
}  // namespace quintara::test
