#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <future>
#include <map>

#include "service/desk/replies.hpp"
#include "service/desk/request.hpp"
#include "service/desk/standard_sources.hpp"
#include "service/prices/moments.hpp"
#include "service/sources/demo_market.hpp"
#include "service/sources/price_folder.hpp"
#include "service/text/text.hpp"
#include "temporary_folder.hpp"

namespace quintara::quotes {

using testing::HasSubstr;

const std::string kHeader = "Date,Open,High,Low,Close,Volume\n";
const std::string kOne = kHeader + "2026-09-27,10,12,9,11,100\n";

// A desk with the trader's folder and the demonstration market.
struct QuoteDeskTest : testing::Test {
  // The reply, or status and reason of the refusal. The target begins with t or q.
  std::string reply(const char* date, const std::string& target) {
    today = *MomentReader().read(date)->day;
    try {
      return target[0] == 't' ? desk.table(target) : desk.quote(target);
    } catch (const Refusal& refusal) {
      return std::to_string(refusal.status) + " " + refusal.what();
    }
  }

  TemporaryFolder folder;
  std::string logged;
  Day today{};
  const Log log{LogLevel::Warning, [this](const std::string& line) { logged += line; }};
  const SourceSettings settings{folder.path, std::nullopt, log};
  const QuoteDesk desk{standardSources(settings, {}), [this] { return today; },
                       [this](const std::string& why) { log.warning(why); }};
};

TEST_F(QuoteDeskTest, AnswersWithTheBarsOfTheDatesAskedFor) {
  // Three weeks, the first one a Sunday, and two months that meet on a Wednesday.
  folder.write("A+B.csv", kOne +
                              "2026-09-28,11,14,11,12,100\n2026-09-30,12,13,8,13,100\n"
                              "2026-10-01,13,15,12,14,100\n2026-10-05,14,16,13,15,100\n"
                              "2026-10-06,15,17,14,16,100\n");
  const std::string year = "t?s=a+b&a=1&b=1&c=2026&d=12&e=31&f=2026&g=";
  const std::string sunday = "27-Sep-26,10.00,12.00,9.00,11.00,100\n";
  const std::string from30 =
      "1-Oct-26,13.00,15.00,12.00,14.00,100\n30-Sep-26,12.00,13.00,8.00,13.00,100\n";
  const struct {
    const char* today;
    std::string target, expected;
  } cases[] = {
      // A bar of today is the quote; what comes after today is not known yet.
      {"2026-10-05", year + "d", from30 + "28-Sep-26,11.00,14.00,11.00,12.00,100\n" + sunday},
      // The first and the last date count.
      {"2026-10-07", "t?s=A%2Bb&a=9&b=30&c=2026&d=10&e=5&f=2026&g=d&x=.csv",
       "5-Oct-26,14.00,16.00,13.00,15.00,100\n" + from30},
      // Today counts in its week and month; bars begin within the dates and end with them.
      {"2026-10-06", year + "w",
       "5-Oct-26,14.00,17.00,13.00,16.00,200\n28-Sep-26,11.00,15.00,8.00,14.00,300\n" + sunday},
      {"2026-10-06", "t?s=A+B&a=9&b=28&c=2026&d=10&e=5&f=2026&g=m",
       "1-Oct-26,13.00,16.00,12.00,15.00,200\n"},
      // The quote is today's bar or the latest close.
      {"2026-10-06", "q?s=a%2bb&f=sl1d1t1c1ohgv&e=.csv",
       "\"A+B\",16.00,\"10/6/2026\",\"4:00pm\",+1.00,15.00,17.00,14.00,100\r\n"},
      {"2026-09-28", "q?s=A+B",
       "\"A+B\",12.00,\"9/28/2026\",\"4:00pm\",+1.00,11.00,14.00,11.00,100\r\n"},
      {"2026-10-10", "q?s=A+B", "\"A+B\",16.00,\"10/6/2026\",\"4:00pm\",+1.00,N/A,N/A,N/A,N/A\r\n"},
      {"2026-09-24", "q?s=A+B", "404 no prices for A+B until today"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(reply(c.today, c.target), (c.target[0] == 't' ? kHeader : "") + c.expected);
  }
}

TEST_F(QuoteDeskTest, AFileOfTheTickerIsNotAnsweredWithAnotherSource) {
  folder.write("DEMO.csv", kHeader);
  EXPECT_EQ(reply("2026-10-06", "q?s=demo"), "404 own prices in DEMO.csv: no rows");
}

TEST_F(QuoteDeskTest, ReadsOnlyRegularFilesOfItsOwnFolder) {
  const TemporaryFolder outside;
  outside.write("S.csv", kOne);
  std::filesystem::create_symlink(outside.path / "S.csv", folder.path / "LINK.csv");
  ::mkfifo((folder.path / "PIPE.csv").c_str(), 0600);
  folder.write("LARGE.csv", kHeader);
  std::filesystem::resize_file(folder.path / "LARGE.csv", 33'600'000);
  for (const std::string name :
       {"LINK.csv: a link", "PIPE.csv: not a regular", "LARGE.csv: larger than 32 MB"}) {
    EXPECT_THAT(reply("2026-10-06", "q?s=" + name.substr(0, name.find('.'))), HasSubstr(name));
    EXPECT_THAT(logged, HasSubstr(name));
  }
  const std::string name = outside.path.filename().string();
  for (const std::string& way :
       {"../" + name + "/S", "..%2f" + name + "%2FS", "%2e%2E/" + name + "/S",
        "%252e%252e%252f" + name + "%252fS", "..%5c" + name + "%5cS", "X/../../" + name + "/S",
        outside.path.string() + "/S", "../" + name + "/S%00", std::string("/dev/zero%00")}) {
    EXPECT_THAT(reply("2026-10-06", "q?s=" + way), testing::StartsWith("404 no prices for "))
        << way;
  }
  PriceFolder source(folder.path, log);
  EXPECT_TRUE(std::holds_alternative<NotFound>(source.find("../" + name + "/S", Day{})));
}

TEST_F(QuoteDeskTest, FindsFilesInAnyCaseAndSeesTheirChanges) {
  for (const std::string name : {"Brk.b", "^DJI", "CL=F", "A-B", "M&M", "A+B", ".X", "50%"}) {
    folder.write(name + ".Csv", kOne);
    EXPECT_THAT(reply("2026-10-06", "q?s=" + percentEncoded(name)), HasSubstr(",11.00,")) << name;
  }
  folder.write("Brk.b.Csv", kHeader + "2026-11-05,1,3,1,3\n2026-11-04,1\n");
  EXPECT_THAT(reply("2026-11-06", "q?s=brk.b"), HasSubstr(",3.00,"));
  EXPECT_EQ(logged, "quintara-quotes: warning: Brk.b.Csv: bad lines left out: 1\n");
  EXPECT_EQ(reply("2026-11-06", "t?s=.X&a=10&b=1&c=2026&d=11&e=6&f=2026&g=d"), kHeader);
  EXPECT_THAT(logged, HasSubstr(".X has 1 day from 27-Sep-26 to 27-Sep-26, but none within"
                                " 1-Oct-26 to 5-Nov-26\n"));
}

TEST_F(QuoteDeskTest, LetsFewWaitForLargeFiles) {
  folder.write("LARGE.csv", kHeader + std::string(1'200'000, 'x') + "\n2026-11-05,1,3,1,3\n");
  PriceFolder source(folder.path, log);
  std::vector<std::future<Found>> crowd(3 * PriceFolder::kMostLarge);
  for (auto& found : crowd) {
    found = std::async(std::launch::async, [&] { return source.find("LARGE", Day{}); });
  }
  std::map<std::size_t, int> kinds;
  for (auto& found : crowd) {
    ++kinds[found.get().index()];
  }
  EXPECT_GE(kinds[Found(DailyBars{}).index()], PriceFolder::kMostLarge);
  EXPECT_GE(kinds[Found(Failed{}).index()], 1);
  EXPECT_THAT(logged, HasSubstr("too many requests wait for large files"));
}

DailyBars simulated(const char* ticker, Day today) {
  return std::get<DailyBars>(DemoMarket().find(ticker, today));
}

// Another machine, compiler or day has to come to the same prices.
TEST(DemoMarket, APriceDependsOnTickerAndDateAlone) {
  const Day today = *makeDay(2026, 11, 20);
  std::uint64_t sum = 0xcbf29ce484222325U;  // of all bars, by the rule of Fowler, Noll and Vo
  for (const char* ticker : {"DEMO", "DOWN", "RANGE", "PENNY", "INDEX"}) {
    DailyBars bars = simulated(ticker, today + std::chrono::days{3000});
    EXPECT_LE(bars.front().date, *makeDay(2024, 2, 7));
    std::erase_if(bars, [today](const DailyBar& bar) { return bar.date > today; });
    EXPECT_EQ(bars.back(), simulated(ticker, today).back());
    for (const char c : tableText(bars, bars.front().date)) {
      sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
  }
  EXPECT_EQ(sum, 636285316939222039U);
}

TEST(DemoMarket, EveryTickerKeepsItsCharacterThrough2099) {
  // The trend of any two years, and the lowest and the highest price in cents.
  for (const auto& [ticker, trend, lowest, highest] : {std::tuple{"DEMO", 1, 500, 20'000'000},
                                                       {"DOWN", -1, 100, 2'500'000},
                                                       {"RANGE", 0, 3'400, 4'700},
                                                       {"PENNY", 0, 10, 99},
                                                       {"INDEX", 0, 1'000'100, 4'500'000}}) {
    for (int year = 2010; year < 2109; year += 9) {  // of eleven each: no two years are left out
      const DailyBars bars = simulated(ticker, *makeDay(std::min(year, 2099), 12, 31));
      for (std::size_t i = 0; i < bars.size(); ++i) {
        const auto& [date, open, high, low, close, volume] = bars[i];
        ASSERT_TRUE(Price(lowest, 2) <= low && low <= std::min(open, close) &&
                    std::max(open, close) <= high && high <= Price(highest, 2) && volume > 0)
            << ticker << tableDate(date);
        const auto way = close <=> (i < 522 ? close : bars[i - 522].close);
        ASSERT_TRUE(way == 0 || trend == 0 || (way > 0) == (trend > 0)) << ticker << year;
      }
    }
  }
}

}  // namespace quintara::quotes
