#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QImage>

#include "support/faults.hpp"
#include "support/real_program.hpp"
#include "support/wire.hpp"

namespace quintara::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using Messages = std::vector<std::string>;

constexpr std::size_t kMegabyte = 1024;

struct Trader : RealProgram {
  using RealProgram::RealProgram;
  Messages drawChart() {
    control<TextBox>("txtTicker").setText("xyz");
    return clicked("cmdChart");
  }
  Messages clicked(const char* name) {
    messages.clear();
    click(name);
    return messages;
  }
  /// The chart area without its labels.
  static QImage picture() { return widget("picChart")->grab(QRect(0, 100, 400, 400)).toImage(); }
  [[nodiscard]] std::string caption(const char* label) const {
    return control<Label>(label).Caption();
  }
  [[nodiscard]] int ticked() const {
    return control<CheckBox>("chkShowA1").Value() + control<CheckBox>("chkA2E1618").Value();
  }
};

TEST(Memory, FiveHundredChartsTakeNoMoreThanTen) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "freed memory is kept for a while";
#endif
  Trader trader;
  std::size_t afterTen = 0;
  for (int charts = 1; charts <= 500; ++charts) {
    ASSERT_THAT(trader.drawChart(), IsEmpty());
    if (charts == 10) afterTen = memoryKilobytes("VmRSS:");
  }
  const std::size_t afterAll = memoryKilobytes("VmRSS:");
  EXPECT_LT(afterAll, afterTen + 2 * kMegabyte);
  RecordProperty("KilobytesAfterTen", std::to_string(afterTen));
  RecordProperty("KilobytesAfterAll", std::to_string(afterAll));
}

/// Draw Chart over a working chart, and whether two level boxes are ticked afterwards.
class Faults : public testing::TestWithParam<std::tuple<Fault, bool>> {
 protected:
  Messages drawFaultyChart() {
    trader.server.serve(fault.table, fault.quote);
    trader.server.refuse(fault.table.bytes.empty());
    const std::size_t most = memoryKilobytes("VmHWM:");
    QElapsedTimer timer;
    timer.start();
    Messages messages = trader.drawChart();
    EXPECT_LT(timer.elapsed(), 15'000);
    EXPECT_LT(memoryKilobytes("VmHWM:"), most + 256 * kMegabyte);
    trader.server.serve(ok(table(200)), ok(quote()));
    trader.server.refuse(false);
    return messages;
  }
  /// Over a series that cannot be drawn, each press unticks one box and ends there.
  void tickAndUntick() {
    const bool reports = *fault.outcome.ticked != '\0';
    const Messages report(reports ? 1 : 0, "16 Quintara: " + std::string(fault.outcome.ticked));
    EXPECT_EQ(trader.clicked("chkShowA1"), report);
    EXPECT_EQ(trader.clicked("chkA2E1618"), report);
    for (int left = 2; reports && left > 0; --left) {
      EXPECT_EQ(trader.ticked(), left);
      EXPECT_THAT(trader.drawChart(), IsEmpty());
      EXPECT_EQ(trader.caption("lblOpen"), fault.outcome.open);
    }
    EXPECT_EQ(trader.ticked(), reports ? 0 : 2);
  }
  const Fault fault = std::get<0>(GetParam());
  const bool waits =
      fault.table.end == Reply::End::Silence || fault.quote.end == Reply::End::Silence;
  Trader trader{{.time = std::chrono::milliseconds(waits ? 300 : 20'000)}};
};

TEST_P(Faults, EndInAMessageOrInSilenceAndTheProgramGoesOn) {
  ASSERT_THAT(trader.drawChart(), IsEmpty());
  trader.control<TextBox>("txtA1").setText("50");
  trader.control<TextBox>("txtB1").setText("60");
  trader.click("cmdCalculate");
  const QImage before = Trader::picture();
  const std::string level = trader.caption("lblA1R1");
  const Outcome& outcome = fault.outcome;
  const Messages messages = drawFaultyChart();
  EXPECT_EQ(messages.size(), outcome.told ? 1U : 0U);
  EXPECT_THAT(messages, testing::Each(HasSubstr("16 Data retrieval error: Error occurred while "
                                                "retrieving historical data for XYZ\r\n")));
  EXPECT_EQ(Trader::form("frmGettingData"), nullptr);
  EXPECT_EQ(trader.caption("lblOpen"), outcome.open);
  EXPECT_EQ(trader.control<TextBox>("txtA1").Text(), outcome.cleared ? "" : "50");
  EXPECT_EQ(trader.caption("lblA1R1"), outcome.cleared ? "" : level);
  EXPECT_EQ(Trader::picture() != before, outcome.repainted);
  if (std::get<1>(GetParam())) tickAndUntick();
  EXPECT_THAT(trader.drawChart(), IsEmpty());
  EXPECT_EQ(trader.ticked(), 0);
  EXPECT_EQ(trader.caption("lblOpen"), "60.25");
  EXPECT_TRUE(Trader::picture() == before);
}

INSTANTIATE_TEST_SUITE_P(DrawChart, Faults,
                         testing::Combine(testing::ValuesIn(faults()), testing::Bool()));

}  // namespace
}  // namespace quintara::test
