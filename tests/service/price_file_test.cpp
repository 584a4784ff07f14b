#include "service/price_file.hpp"

#include <gtest/gtest.h>

#include "service/replies.hpp"

namespace quintara::quotes {
namespace {

// The bars newest first, then the number of bad lines, then why there are no bars.
std::string summary(std::string_view text) {
  const PriceFile file = parsePriceFile(text);
  const std::string table = tableText(file.bars, Day::min());
  return table.substr(table.find('\n') + 1) + std::to_string(file.badLines) + file.problem;
}

TEST(PriceFile, ReadsWhatBrokersExport) {
  const std::string header = "Date,Open,High,Low,Close,Volume\n";
  const std::string two = "6-Nov-26,2.00,4.00,1.00,3.00,20\n5-Nov-26,1.00,2.00,1.00,2.00,10\n0";
  EXPECT_EQ(summary(header + "2026-11-06,2,4,1,3,20\n5-Nov-26,1,2,1,2,10\n"), two);
  EXPECT_EQ(summary(header + "5-Nov-26,1,2,1,2,10\n6-Nov-2026,2,4,1,3,20"), two);
  EXPECT_EQ(summary("\xEF\xBB\xBF\r\n\"close\",\"Adj Close\",LOW,\"High\", open ,DATE\r\n"
                    "\"1.5\",\"1,000\",1,2,1.25,\"2026-11-05\"\r\n\r\n"),
            "5-Nov-26,1.25,2.00,1.00,1.50,0\n0");
  EXPECT_EQ(summary("Date;Open;High;Low;Close;Volume\n2026-11-05;1,25;2.5;1;1,5;7,0\n"),
            "5-Nov-26,1.25,2.50,1.00,1.50,7\n0");
  EXPECT_EQ(summary(header + "2026-11-05,1,2,1,2,N/A\n2026-11-06,1,2,1,2\n"),
            "6-Nov-26,1.00,2.00,1.00,2.00,0\n5-Nov-26,1.00,2.00,1.00,2.00,0\n0");
}

TEST(PriceFile, LeavesOutAndCountsBadLines) {
  const std::string good = "2026-11-05,1,2,1,2,3\n";
  for (const char* bad :
       {"2026-11-05,5,5,5,5,5", "rubbish", ",,,,,", "2026-11-06,0,2,0,2,3", "2026-11-06,3,2,1,1,3",
        "2026-11-06,1,2,1.5,2,3", "2026-11-06,1,2,1,3,3", "2026-11-06,1,2000000000,1,2,3",
        "2026-11-06,nan,2,1,2,3", "2026-11-06,1,2,0.00001,2,3", "2026-11-31,1,2,1,2,3",
        "2026-11-06,\"1,2,1,2,3", "2026-11-06,1,2,1,2,-3", "2026-11-06,1,2,1"}) {
    EXPECT_EQ(summary("Date,Open,High,Low,Close,Volume\n" + good + bad),
              "5-Nov-26,1.00,2.00,1.00,2.00,3\n1")
        << bad;
  }
}

TEST(PriceFile, SaysWhyThereAreNoBars) {
  EXPECT_EQ(summary(""), "0no column Date, Open, High, Low, Close");
  EXPECT_EQ(summary("Date,Open,High,Close\n2026-11-05,1,2,2\n"), "0no column Low");
  EXPECT_EQ(summary(std::string_view("Date,Open,High,Low,Close\n\0,1\nx\n", 31)),
            "2no usable line, 2 bad ones");
}

}  // namespace
}  // namespace quintara::quotes
