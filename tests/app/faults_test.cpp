#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QImage>
#include <utility>

#include "support/faults.hpp"
#include "support/real_program.hpp"

namespace quintara::test {
namespace {

using testing::IsEmpty;
using Messages = std::vector<std::string>;

constexpr std::size_t kMegabyte = 1024;
constexpr const char* kFailed =
    "16 Data retrieval error: Error occurred while retrieving historical data for XYZ\r\n"
    "Please verify that the ticker symbol entered is correct and you are connected to the Internet";

struct Trader : RealProgram {
  using RealProgram::RealProgram;
  Messages drawChart() {
    setText("txtTicker", "xyz");
    return clicked("cmdChart");
  }
  Messages clicked(const char* name) {
    click(name);
    return std::exchange(messages, {});
  }
  /// The chart area without its labels.
  static QImage picture() { return widget("picChart").grab(QRect(0, 100, 400, 400)).toImage(); }
  static int ticked() {
    return widget<QAbstractButton>("chkShowA1").isChecked() +
           widget<QAbstractButton>("chkA2E1618").isChecked();
  }
};

TEST(Memory, FiveHundredChartsTakeNoMoreThanTen) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "freed memory is kept for a while";
#endif
  Trader trader;
  for (int charts = 0; charts < 10; ++charts) ASSERT_THAT(trader.drawChart(), IsEmpty());
  const std::size_t afterTen = memoryKilobytes("VmRSS:");
  for (int charts = 10; charts < 500; ++charts) ASSERT_THAT(trader.drawChart(), IsEmpty());
  const std::size_t afterAll = memoryKilobytes("VmRSS:");
  std::printf("resident: %zu KB after 10 charts, %zu KB after 500\n", afterTen, afterAll);
  EXPECT_LT(afterAll, afterTen + 2 * kMegabyte);
}

/// Draw Chart over a working chart, and whether two level boxes are ticked afterwards.
class Faults : public testing::TestWithParam<std::tuple<Fault, bool>> {
 protected:
  /// Over a series that cannot be drawn, each press unticks one box and ends there.
  void tickAndUntick() {
    const bool reports = *fault.outcome.ticked != '\0';
    const Messages report(reports ? 1 : 0, "16 Quintara: " + std::string(fault.outcome.ticked));
    for (const char* box : {"chkShowA1", "chkA2E1618"}) EXPECT_EQ(trader.clicked(box), report);
    for (int left = 2; reports && left > 0; --left) {
      EXPECT_EQ(Trader::ticked(), left);
      EXPECT_THAT(trader.drawChart(), IsEmpty());
      EXPECT_EQ(Trader::shown("lblOpen"), fault.outcome.open);
    }
    EXPECT_EQ(Trader::ticked(), reports ? 0 : 2);
  }
  const Fault fault = std::get<0>(GetParam());
  const bool waits =
      fault.table.end == Reply::End::Silence || fault.quote.end == Reply::End::Silence;
  Trader trader{std::chrono::milliseconds(waits ? 300 : 20'000)};
};

TEST_P(Faults, EndInAMessageOrInSilenceAndTheProgramGoesOn) {
  ASSERT_THAT(trader.drawChart(), IsEmpty());
  Trader::setText("txtA1", "50");
  Trader::setText("txtB1", "60");
  Trader::click("cmdCalculate");
  const QImage before = Trader::picture();
  const std::size_t most = memoryKilobytes("VmHWM:");
  QElapsedTimer timer;
  timer.start();
  trader.server.serve(fault.table, fault.quote);
  const Outcome& outcome = fault.outcome;
  EXPECT_EQ(trader.drawChart(), outcome.told ? Messages{kFailed} : Messages{});
  EXPECT_LT(timer.elapsed(), 15'000);
  EXPECT_LT(memoryKilobytes("VmHWM:"), most + 256 * kMegabyte);
  EXPECT_THROW(Trader::form("frmGettingData"), std::out_of_range);
  EXPECT_EQ(Trader::shown("lblOpen"), outcome.open);
  EXPECT_EQ(Trader::shown("txtA1"), outcome.cleared ? "" : "50");
  EXPECT_EQ(Trader::shown("lblA1R1"), outcome.cleared ? "" : "56.18");
  EXPECT_EQ(Trader::picture() != before, outcome.repainted);
  trader.server.serve(ok(table(200)), ok(quote()));
  if (std::get<1>(GetParam())) tickAndUntick();
  EXPECT_THAT(trader.drawChart(), IsEmpty());
  EXPECT_EQ(Trader::ticked(), 0);
  EXPECT_EQ(Trader::shown("lblOpen"), "60.25");
  EXPECT_TRUE(Trader::picture() == before);
}

INSTANTIATE_TEST_SUITE_P(DrawChart, Faults,
                         testing::Combine(testing::ValuesIn(faults()), testing::Bool()));

}  // namespace
}  // namespace quintara::test
