// The program is killed, or the power goes, while it writes its files.
#include <gtest/gtest.h>

#include "kill/cuts.h"

namespace kestrum::end_to_end {
namespace {

void ExpectAtMostOneRecordLost(const CutTable& table) {
  EXPECT_LE(table.most_lost, 1U);
  EXPECT_EQ(table.doubled, 0U);
  EXPECT_EQ(table.torn, 0U);
  EXPECT_EQ(table.out_of_order, 0);
  EXPECT_EQ(table.broken_configurations, 0);
  if (testing::Test::HasFailure()) std::puts((CutTable::Head() + "\n" + table.Row("here")).c_str());
}

TEST(Kill, AtAnyMomentCostsAtMostTheRecordOfThatMoment) {
  constexpr int kKills = 40;
  const CutTable table = Kills(kKills, 20240501);
  EXPECT_EQ(table.runs, kKills);
  EXPECT_GE(table.made, 100U);
  ExpectAtMostOneRecordLost(table);
}

TEST(PowerCut, AtAnyMomentCostsAtMostTheRecordOfThatMoment) {
  constexpr int kCuts = 40;
  const CutTable table = PowerCuts(kCuts, 250, 20240502);
  EXPECT_EQ(table.runs, kCuts);
  ExpectAtMostOneRecordLost(table);
}

// What the tables are made of sees what it is there for.
TEST(LogReport, CountsWhatIsLostDoubledAndTorn) {
  const std::string head = "--\r\nhh\r\n--\r\n";
  const auto record = [](int number) {
    return "12:00:00, GPS Ok, 5157.1234N, 00532.1234E, 1.25 km, " + std::to_string(number) +
           " m, 123, 128, S9, 50.0 uV, 0.5 mV/m\r\n";
  };
  const LogReport good = ReportOf(head + record(1) + record(2), 2);
  EXPECT_EQ(good.records, 2U);
  EXPECT_EQ(good.lost + good.doubled + good.torn, 0U);
  EXPECT_TRUE(good.in_order);
  EXPECT_EQ(ReportOf(head + record(1) + record(3), 4).lost, 2U);
  EXPECT_EQ(ReportOf(head + record(1) + record(1), 1).doubled, 1U);
  EXPECT_FALSE(ReportOf(head + record(2) + record(1), 2).in_order);
  EXPECT_EQ(ReportOf(head + record(1) + "12:00:00, GPS\r\n", 1).torn, 1U);
  EXPECT_EQ(ReportOf(head + record(1).substr(0, 70), 1).torn, 2U) << "a torn line, and no line end";
  EXPECT_EQ(ReportOf("--\r\nhh\r\n" + record(1), 1).torn, 3U);
  EXPECT_EQ(ReportOf(record(1), 0).torn, 1U) << "a record without a head";
}

}  // namespace
}  // namespace kestrum::end_to_end
