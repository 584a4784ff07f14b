#include "service/price_folder.hpp"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "temporary_folder.hpp"

namespace quintara::quotes {
namespace {

using testing::HasSubstr;

const std::string kHeader = "Date,Open,High,Low,Close\n";

class PriceFolderTest : public testing::Test {
 protected:
  // The latest close, or why there is none.
  std::string latest(const std::string& ticker) {
    const Found found = source.find(ticker, Day{});
    if (const auto* unusable = std::get_if<Unusable>(&found)) {
      return unusable->reason;
    }
    const auto* bars = std::get_if<DailyBars>(&found);
    return bars != nullptr ? priceText(bars->back().close) : "not found";
  }

  TemporaryFolder folder;
  std::string logged;
  PriceFolder source{folder.path, Log(LogLevel::Warning, [this](auto& line) { logged += line; })};
};

TEST_F(PriceFolderTest, FindsAFileInAnyCaseAndSeesItsChanges) {
  folder.write("Brk.b.Csv", kHeader + "2026-11-05,1,2,1,2\n");
  EXPECT_EQ(latest("BRK.B"), "2.00");
  EXPECT_EQ(logged, "");
  folder.write("Brk.b.Csv", kHeader + "2026-11-05,1,3,1,3\n?\n");
  EXPECT_EQ(latest("BRK.B"), "3.00");
  EXPECT_EQ(logged, "quintara-quotes: warning: Brk.b.Csv: bad lines left out: 1\n");
  EXPECT_EQ(latest("BRK"), "not found");
}

TEST_F(PriceFolderTest, ReadsTickersWithSigns) {
  for (const char* ticker : {"^DJI", "CL=F", "A-B", "M&M", "A+B", ".X", "50%"}) {
    folder.write(std::string(ticker) + ".csv", kHeader + "2026-11-05,1,2,1,2\n");
    EXPECT_EQ(latest(ticker), "2.00") << ticker;
  }
}

TEST_F(PriceFolderTest, ReadsOnlyRegularFilesOfItsOwn) {
  const TemporaryFolder outside;
  outside.write("S.csv", kHeader + "2026-11-05,1,2,1,2\n");
  std::filesystem::create_symlink(outside.path / "S.csv", folder.path / "LINK.csv");
  ::mkfifo((folder.path / "PIPE.csv").c_str(), 0600);
  std::filesystem::create_directory(folder.path / "FOLDER.csv");
  folder.write("LARGE.csv", kHeader);
  std::filesystem::resize_file(folder.path / "LARGE.csv", 33'600'000);
  EXPECT_THAT(latest("LINK"), HasSubstr("LINK.csv: a link"));
  EXPECT_THAT(latest("PIPE"), HasSubstr("PIPE.csv: not a regular file"));
  EXPECT_THAT(latest("FOLDER"), HasSubstr("FOLDER.csv: not a regular file"));
  EXPECT_THAT(latest("LARGE"), HasSubstr("LARGE.csv: larger than 32 MB"));
  EXPECT_THAT(logged, HasSubstr("LARGE.csv: larger than 32 MB\n"));
  EXPECT_EQ(latest("../" + outside.path.filename().string() + "/S"), "not found");
}

}  // namespace
}  // namespace quintara::quotes
