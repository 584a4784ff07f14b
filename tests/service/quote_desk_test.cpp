#include "service/quote_desk.hpp"

#include <gtest/gtest.h>

#include <map>
#include <memory>

#include "service/price_folder.hpp"
#include "service/request.hpp"
#include "temporary_folder.hpp"

namespace quintara::quotes {
namespace {

class QuoteDeskTest : public testing::Test {
 protected:
  QuoteDeskTest() {
    const std::string header = "Date,Open,High,Low,Close,Volume\n";
    const std::string one = header + "2026-09-27,10,12,9,11,100\n";
    // Three weeks, the first one a Sunday, and two months that meet on a Wednesday.
    own.write("A+B.csv", one +
                             "2026-09-28,11,14,11,12,100\n2026-09-30,12,13,8,13,100\n"
                             "2026-10-01,13,15,12,14,100\n2026-10-05,14,16,13,15,100\n"
                             "2026-10-06,15,17,14,16,100\n");
    own.write("BAD.csv", header);
    for (const char* name : {"A+B.csv", "BAD.csv", "ONE.csv"}) {
      further.write(name, one);
    }
  }

  // The reply, or status and reason of the refusal. The target begins with t or q.
  std::string reply(const char* today, const std::string& target) const {
    PriceSources sources;
    sources.push_back(std::make_unique<PriceFolder>(own.path, Log(LogLevel::Error)));
    sources.push_back(std::make_unique<PriceFolder>(further.path, Log(LogLevel::Error)));
    const QuoteDesk desk(std::move(sources), [day = *parseDay(today)] { return day; });
    try {
      return target[0] == 't' ? desk.table(target) : desk.quote(target);
    } catch (const Refusal& refusal) {
      return std::to_string(refusal.status) + " " + refusal.what();
    }
  }

  TemporaryFolder own, further;
};

TEST_F(QuoteDeskTest, TablesHoldTheBarsOfTheDatesAskedFor) {
  const std::string all = "t?s=a+b&a=9&b=1&c=2026&d=10&e=31&f=2026&g=";
  const std::string header = "Date,Open,High,Low,Close,Volume\n";
  const std::string until28 =
      "28-Sep-26,11.00,14.00,11.00,12.00,100\n"
      "27-Sep-26,10.00,12.00,9.00,11.00,100\n";
  const std::string until5 =
      "5-Oct-26,14.00,16.00,13.00,15.00,100\n"
      "1-Oct-26,13.00,15.00,12.00,14.00,100\n"
      "30-Sep-26,12.00,13.00,8.00,13.00,100\n" +
      until28;
  // A bar of today is the quote; what comes after today is not known yet.
  EXPECT_EQ(reply("2026-09-29", all + "d"), header + until28);
  EXPECT_EQ(reply("2026-10-06", all + "d"), header + until5);
  EXPECT_EQ(reply("2026-10-07", all + "d"),
            header + "6-Oct-26,15.00,17.00,14.00,16.00,100\n" + until5);
  // The first and the last date count.
  EXPECT_EQ(reply("2026-10-07", "t?s=A%2Bb&a=9&b=30&c=2026&d=10&e=5&f=2026&g=d&x=.csv"),
            header + until5.substr(0, until5.size() - until28.size()));
  EXPECT_EQ(reply("2026-10-07", "t?s=A+B&a=10&b=2&c=2026&d=10&e=4&f=2026&g=d"), header);
  // Today counts in its week and month; bars begin within the dates and end with them.
  EXPECT_EQ(reply("2026-10-06", all + "w"),
            header +
                "5-Oct-26,14.00,17.00,13.00,16.00,200\n"
                "28-Sep-26,11.00,15.00,8.00,14.00,300\n27-Sep-26,10.00,12.00,9.00,11.00,100\n");
  EXPECT_EQ(reply("2026-10-05", "t?s=A+B&a=9&b=29&c=2026&d=10&e=31&f=2026&g=w"),
            header + "5-Oct-26,14.00,16.00,13.00,15.00,100\n");
  EXPECT_EQ(
      reply("2026-10-06", "t?s=A+B&a=9&b=1&c=2026&d=10&e=5&f=2026&g=m"),
      header + "1-Oct-26,13.00,16.00,12.00,15.00,200\n27-Sep-26,10.00,14.00,8.00,13.00,300\n");
}

TEST_F(QuoteDeskTest, TheQuoteIsTodaysBarOrTheLatestClose) {
  EXPECT_EQ(reply("2026-10-06", "q?s=a%2bb&f=sl1d1t1c1ohgv&e=.csv"),
            "\"A+B\",16.00,\"10/6/2026\",\"4:00pm\",+1.00,15.00,17.00,14.00,100\r\n");
  EXPECT_EQ(reply("2026-10-10", "q?s=A+B"),
            "\"A+B\",16.00,\"10/6/2026\",\"4:00pm\",+1.00,N/A,N/A,N/A,N/A\r\n");
  EXPECT_EQ(reply("2026-10-06", "q?s=one"),
            "\"ONE\",11.00,\"9/27/2026\",\"4:00pm\",N/A,N/A,N/A,N/A,N/A\r\n");
}

TEST_F(QuoteDeskTest, RefusalsSayWhy) {
  const std::string rest = "&a=9&b=1&c=2026&d=10&e=31&f=2026&g=d";
  for (const auto& [query, refusal] : std::map<std::string, std::string>{
           {"", "400 the ticker (s) is missing"},
           {"s=" + std::string(101, 'A') + rest, "400 the ticker (s) is longer than 100 bytes"},
           {"s=A%2" + rest, "404 no prices for A%2"},
           {"s=..%2FA" + rest, "404 no prices for ../A"},
           {"s=A%00%0AB" + rest, "404 no prices for A\\x00\\x0aB"},
           {"s=A%2CB" + rest, "404 no prices for A,B"},
           {"s=bad" + rest, "404 own prices in BAD.csv: no usable line"},
           {"s=ONE&a=2&b=30&c=2026&d=10&e=31&f=2026&g=d", "400 the start date (a, b, c: month, "},
           {"s=ONE&a=265&b=257&c=2026&d=10&e=31&f=2026", "400 the start date (a, b, c: month, "},
           {"s=ONE&a=9&b=1&c=2026&d=10&e=31&f=&g=d", "400 the end date (d, e, f: month, day, "},
           {"s=ONE&a=11&b=1&c=2026&d=10&e=31&f=2026&g=d", "400 the start date is after the end"},
           {"s=ONE&a=9&b=1&c=2026&d=10&e=31&f=2026", "400 the interval (g) is not one of d, w"}}) {
    EXPECT_EQ(reply("2026-10-06", "t?" + query).substr(0, refusal.size()), refusal) << query;
  }
  EXPECT_EQ(reply("2026-10-06", "q?s=ONE&f=sl1"),
            "400 only the fields (f) sl1d1t1c1ohgv are served");
  EXPECT_EQ(reply("2026-09-24", "q?s=ONE"), "404 no prices for ONE until today");
}

}  // namespace
}  // namespace quintara::quotes
