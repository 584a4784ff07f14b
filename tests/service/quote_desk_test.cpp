#include <gmock/gmock.h>
#include <sys/stat.h>

#include <map>

#include "service/price_folder.hpp"
#include "service/request.hpp"
#include "service/server.hpp"
#include "service/text.hpp"
#include "temporary_folder.hpp"

namespace quintara::quotes {
namespace {

using testing::HasSubstr;

const std::string kHeader = "Date,Open,High,Low,Close,Volume\n";
const std::string kOne = kHeader + "2026-09-27,10,12,9,11,100\n";

// A desk with the trader's folder and the demonstration market.
class QuoteDeskTest : public testing::Test {
 protected:
  // The reply, or status and reason of the refusal. The target begins with t or q.
  std::string reply(const char* date, const std::string& target) {
    today = *parseDay(date);
    try {
      return target[0] == 't' ? desk.table(target) : desk.quote(target);
    } catch (const Refusal& refusal) {
      return std::to_string(refusal.status) + " " + refusal.what();
    }
  }

  TemporaryFolder folder;
  std::string logged;
  Day today{};
  const ServerSettings settings{
      0, 0, folder.path, [this] { return today; },
      Log(LogLevel::Warning, [this](const std::string& line) { logged += line; })};
  const QuoteDesk desk{standardSources(settings, {}), settings.today};
};

TEST_F(QuoteDeskTest, AnswersWithTheBarsOfTheDatesAskedFor) {
  // Three weeks, the first one a Sunday, and two months that meet on a Wednesday.
  folder.write("A+B.csv", kOne +
                              "2026-09-28,11,14,11,12,100\n2026-09-30,12,13,8,13,100\n"
                              "2026-10-01,13,15,12,14,100\n2026-10-05,14,16,13,15,100\n"
                              "2026-10-06,15,17,14,16,100\n");
  const std::string year = "t?s=a+b&a=1&b=1&c=2026&d=12&e=31&f=2026&g=";
  const std::string before30 =
      "28-Sep-26,11.00,14.00,11.00,12.00,100\n27-Sep-26,10.00,12.00,9.00,11.00,100\n";
  const std::string since30 =
      "1-Oct-26,13.00,15.00,12.00,14.00,100\n30-Sep-26,12.00,13.00,8.00,13.00,100\n";
  const struct {
    const char* today;
    std::string target, expected;
  } cases[] = {
      // A bar of today is the quote; what comes after today is not known yet.
      {"2026-10-05", year + "d", since30 + before30},
      // The first and the last date count.
      {"2026-10-07", "t?s=A%2Bb&a=9&b=30&c=2026&d=10&e=5&f=2026&g=d&x=.csv",
       "5-Oct-26,14.00,16.00,13.00,15.00,100\n" + since30},
      {"2026-10-07", "t?s=A+B&a=10&b=2&c=2026&d=10&e=4&f=2026&g=d", ""},
      // Today counts in its week and month; bars begin within the dates and end with them.
      {"2026-10-06", year + "w",
       "5-Oct-26,14.00,17.00,13.00,16.00,200\n28-Sep-26,11.00,15.00,8.00,14.00,300\n"
       "27-Sep-26,10.00,12.00,9.00,11.00,100\n"},
      {"2026-10-05", "t?s=A+B&a=9&b=29&c=2026&d=10&e=31&f=2026&g=w",
       "5-Oct-26,14.00,16.00,13.00,15.00,100\n"},
      {"2026-10-06", "t?s=A+B&a=9&b=1&c=2026&d=10&e=5&f=2026&g=m",
       "1-Oct-26,13.00,16.00,12.00,15.00,200\n27-Sep-26,10.00,14.00,8.00,13.00,300\n"},
      // The quote is today's bar or the latest close.
      {"2026-10-06", "q?s=a%2bb&f=sl1d1t1c1ohgv&e=.csv",
       "\"A+B\",16.00,\"10/6/2026\",\"4:00pm\",+1.00,15.00,17.00,14.00,100\r\n"},
      {"2026-10-10", "q?s=A+B", "\"A+B\",16.00,\"10/6/2026\",\"4:00pm\",+1.00,N/A,N/A,N/A,N/A\r\n"},
      {"2026-09-27", "q?s=A+B",
       "\"A+B\",11.00,\"9/27/2026\",\"4:00pm\",N/A,10.00,12.00,9.00,100\r\n"},
      {"2026-09-24", "q?s=A+B", "404 no prices for A+B until today"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(reply(c.today, c.target), (c.target[0] == 't' ? kHeader : "") + c.expected);
  }
}

TEST_F(QuoteDeskTest, RefusalsSayWhy) {
  folder.write("DEMO.csv", kHeader);  // not answered with the demonstration market
  const std::string rest = "&a=9&b=1&c=2026&d=10&e=31&f=2026&g=d";
  for (const auto& [query, refusal] : std::map<std::string, std::string>{
           {"t?", "400 the ticker (s) is missing"},
           {"t?s=" + std::string(101, 'A') + rest, "400 the ticker (s) is longer than 100 bytes"},
           {"t?s=A%2" + rest, "404 no prices for A%2"},
           {"t?s=A%00%0AB" + rest, "404 no prices for A\\x00\\x0aB"},
           {"t?s=demo" + rest, "404 own prices in DEMO.csv: no usable line"},
           {"t?s=DOWN&a=2&b=30&c=2026&d=10&e=31&f=2026&g=d",
            "400 the start date (a, b, c: month, "},
           {"t?s=DOWN&a=265&b=257&c=2026&d=10&e=31&f=2026", "400 the start date (a, b, c: month, "},
           {"t?s=DOWN&a=9&b=1&c=2026&d=10&e=31&f=&g=d", "400 the end date (d, e, f: month, day, "},
           {"t?s=DOWN&a=11&b=1&c=2026&d=10&e=31&f=2026&g=d", "400 the start date is after the end"},
           {"t?s=DOWN&a=9&b=1&c=2026&d=10&e=31&f=2026", "400 the interval (g) is not one of d, w"},
           {"q?s=DOWN&f=sl1", "400 only the fields (f) sl1d1t1c1ohgv are served"}}) {
    EXPECT_EQ(reply("2026-10-06", query).substr(0, refusal.size()), refusal) << query;
  }
}

TEST_F(QuoteDeskTest, ReadsOnlyRegularFilesOfItsOwnFolder) {
  const TemporaryFolder outside;
  outside.write("S.csv", kOne);
  std::filesystem::create_symlink(outside.path / "S.csv", folder.path / "LINK.csv");
  ::mkfifo((folder.path / "PIPE.csv").c_str(), 0600);
  std::filesystem::create_directory(folder.path / "FOLDER.csv");
  folder.write("LARGE.csv", kHeader);
  std::filesystem::resize_file(folder.path / "LARGE.csv", 33'600'000);
  for (const char* name : {"LINK.csv: a link", "PIPE.csv: not a regular", "FOLDER.csv: not a reg",
                           "LARGE.csv: larger than 32 MB"}) {
    const std::string ticker = std::string(name).substr(0, std::string(name).find('.'));
    EXPECT_THAT(reply("2026-10-06", "q?s=" + ticker), HasSubstr(name));
    EXPECT_THAT(logged, HasSubstr(name));
  }
  const std::string name = "../" + outside.path.filename().string() + "/S";
  PriceFolder source(folder.path, settings.log);
  EXPECT_TRUE(std::holds_alternative<NotFound>(source.find(name, Day{})));
}

TEST_F(QuoteDeskTest, FindsFilesInAnyCaseAndSeesTheirChanges) {
  for (const std::string name : {"Brk.b", "^DJI", "CL=F", "A-B", "M&M", "A+B", ".X", "50%"}) {
    folder.write(name + ".Csv", kOne);
    EXPECT_THAT(reply("2026-10-06", "q?s=" + percentEncoded(name)), HasSubstr(",11.00,")) << name;
  }
  folder.write("Brk.b.Csv", kHeader + "2026-11-05,1,3,1,3\n?\n");
  EXPECT_THAT(reply("2026-11-06", "q?s=brk.b"), HasSubstr(",3.00,"));
  EXPECT_EQ(logged, "quintara-quotes: warning: Brk.b.Csv: bad lines left out: 1\n");
}

}  // namespace
}  // namespace quintara::quotes
