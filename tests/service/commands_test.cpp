#include <gmock/gmock.h>

#include <map>

#include "service/commands/add_prices.hpp"
#include "service/commands/check.hpp"
#include "service/commands/list_prices.hpp"
#include "temporary_folder.hpp"

namespace quintara::quotes {

using testing::HasSubstr;

const Day kToday = *makeDay(2026, 11, 23);
const std::string kHeader = "Date,Open,High,Low,Close\n";
const std::string kTwo = kHeader + "2026-11-05,1,2,1,2\n2026-11-06,1,3,1,1.09266\n";
const std::string kNew = kHeader + "2026-11-23,1,2,1,2\n";
const std::string kOther = kHeader + "2026-11-05,1,2,1,1\n";

TEST(AddPrices, PutsInWholeFilesThatCanBeUsedAndReplacesOnlyWhenAsked) {
  const TemporaryFolder downloads, data;
  const std::filesystem::path folder = data.path / "new/prices";
  const struct {
    std::string name, text, ticker;
    bool replace;
    std::string outcome;
  } cases[] = {
      {"acme (1).csv", kTwo, "", false,
       "ACME is in the price folder: 2 days to 6-Nov-26, newest close 1.09266\n"},
      {"ACME(12).Tsv", kTwo, "", false, "ACME is in the price folder: 2 days"},
      {"acme.txt", kOther, "", false,
       "acme.txt is not added: the price folder has ACME.csv already"},
      {"acme.txt", kHeader, "", true, "acme.txt is not added: no rows"},
      {"acme.txt", kOther, "", true, "ACME is in the price folder: 1 day, 5-Nov-26"},
      {"late.csv", kHeader + "2026-11-24,1,2,1,2\n", "", false,
       "late.csv is not added: all its days"},
      {"export.dat", kTwo, "", false, "export.dat is not added: its name is not that of a ticker"},
      {"export.dat", kTwo, "br/k", false, "export.dat is not added: no prices for br/k"},
      {"export.dat", kNew, "brk.b", false, "BRK.B is in the price folder"},
      {"(1).csv", kTwo, "", false, "(1).csv is not added: its name"},
  };
  for (const auto& c : cases) {
    downloads.write(c.name, c.text);
    std::ostringstream out;
    const bool added =
        addPrices(folder, {{downloads.path / c.name}, c.ticker, c.replace}, kToday, out);
    EXPECT_THAT("\n" + out.str(), HasSubstr("\n\n" + c.outcome));
    EXPECT_EQ(added, c.outcome.find("not added") == c.outcome.npos) << c.outcome;
  }
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    files[entry.path().filename()] = contentOf(entry.path());
  }
  EXPECT_THAT(files,
              testing::ElementsAre(std::pair("ACME.csv", kOther), std::pair("BRK.B.csv", kNew)));
}

TEST(AddPrices, KeepsTheNameOfTheFileThatIsReplaced) {
  const TemporaryFolder downloads, folder;
  folder.write("Acme.txt", kTwo);
  downloads.write("ACME.csv", kOther);
  std::ostringstream out;
  EXPECT_TRUE(addPrices(folder.path, {{downloads.path / "ACME.csv"}, "", true}, kToday, out));
  EXPECT_EQ(contentOf(folder.path / "Acme.txt"), kOther);
  EXPECT_FALSE(std::filesystem::exists(folder.path / "ACME.csv"));
}

TEST(ListPrices, HasALineForEveryFile) {
  const TemporaryFolder folder;
  for (const char* name : {"zeta.csv", "Zeta.TXT", "acme.tsv", "note.xlsx", "a,b.csv", ".hidden"}) {
    folder.write(name, kTwo);
  }
  folder.write("bad.txt", kHeader);
  std::ostringstream out;
  EXPECT_TRUE(listPrices(folder.path, out));
  EXPECT_THAT(out.str(), testing::MatchesRegex(
                             "note.xlsx is not used: its name does not end in .csv, .txt or .tsv\n"
                             "a,b.csv is not used: no prices for A,B: .*\n"
                             "ACME       2 days to 6-Nov-26, newest close 1.09266\n"
                             "BAD        no prices: no rows\n"
                             "ZETA       2 days to 6-Nov-26, newest close 1.09266\n"
                             "Zeta.TXT is not used: zeta.csv goes before it\n"));
  EXPECT_FALSE(listPrices(folder.path / "none", out));
}

TEST(Check, TellsWhoAnswersWhomThatHidesAndWhichChartsStayEmpty) {
  const TemporaryFolder folder;
  const SourceSettings settings{folder.path, std::nullopt, Log(LogLevel::Error, [](const auto&) {}),
                                "line 7: url"};
  for (const auto& [text, expected] : std::map<std::string, std::string>{
           {"",
            "Asked own prices in .*:\n  nothing for DEMO\nAsked the demonstration market:\n"
            "  This is the answer for DEMO.\nNot needed: the provider: .* line 7: url\n"},
           {kHeader,
            "File: demo.csv\n.*no rows.*This hides what the demonstration market has.*No prices "
            "for DEMO.\n"},
           {kTwo,
            "Days: 2 of 2 rows; rows left out: 0\n.*6-Nov-26,1.00,3.00,1.00,1.09266,0\n.*"
            "The quote that a chart gets: \"DEMO\",1.09266,"},
           {kHeader + "2026-05-24,1,2,1,2\n", "shorter than: Daily, 12 months.\n"},
           {kHeader + "2025-11-22,1,2,1,2\n", "shorter than: Daily, 18 months.\n"},
           {kHeader + "2025-05-24,1,2,1,2\n", "shorter than: Daily, 24 months.\n"},
           {kHeader + "2024-11-22,1,2,1,2\n", "shorter than: Weekly.\n"},
           {kHeader + "2022-09-04,1,2,1,2\n", "shorter than: Monthly.\n"},
           {kHeader + "2016-11-23,1,2,1,2\n", "shorter than: Monthly.\n"},
           {kHeader + "2016-11-22,1,2,1,2\n", "No chart reaches back to the newest day, 22-Nov-16"},
           {kHeader + "2026-11-24,1,2,1,2\n", "All days lie after today"}}) {
    text.empty() ? void() : folder.write("demo.csv", text);
    std::ostringstream out;
    const bool charted = check(settings, "demo", kToday, out);
    EXPECT_EQ(charted, out.str().find("The quote that a chart gets") != std::string::npos);
    EXPECT_THAT(out.str(), testing::ContainsRegex(expected));
  }
}

}  // namespace quintara::quotes
