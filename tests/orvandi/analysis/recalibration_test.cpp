#include "analysis/recalibration.h"

#include <gtest/gtest.h>

#include <cmath>

#include "analysis/samples.h"
#include "support/log_text.h"

namespace orvandi {
namespace {

// A calibration file with cells at some raw values.
std::string File(const std::string& header, const std::vector<std::pair<int, std::string>>& cells) {
  std::vector<std::string> lines(257, ", , ");
  lines[0] = header;
  for (const auto& [raw, line] : cells) lines[static_cast<std::size_t>(raw) + 1] = line;
  return Text(lines);
}

const std::vector<std::pair<int, std::string>> kCells = {
    {0, "S0, 0, 0"}, {100, "S5, 10, 4"}, {200, "S9, 110, 44"}, {240, "S9 + 20dB, 500, 200"}};

TEST(Recalibration, ConvertsAsTheLoggerDoes) {
  Recalibration table;
  ASSERT_TRUE(table.Load(File(" FT840 LSB 3630", kCells)));
  EXPECT_EQ(table.Header(), "FT840 LSB 3630");
  // On a point, and between two of them.
  EXPECT_EQ(table.Of(100).s_text, "S5");
  EXPECT_FLOAT_EQ(table.Of(100).microvolt, 10);
  EXPECT_FLOAT_EQ(table.Of(100).millivolt_per_m, 4);
  EXPECT_EQ(table.Of(150).s_text, "S5+");
  EXPECT_FLOAT_EQ(table.Of(150).microvolt, 60);
  EXPECT_FLOAT_EQ(table.Of(150).millivolt_per_m, 24);
  EXPECT_EQ(table.Of(0).s_text, "S0");
  // Above the last point, and no raw value at all.
  EXPECT_TRUE(std::isnan(table.Of(250).microvolt));
  EXPECT_EQ(table.Of(-1).s_text, "S?");
  EXPECT_TRUE(std::isnan(table.Of(256).millivolt_per_m));
}

TEST(Recalibration, RoundsByTheBandOfItsHeader) {
  const std::vector<std::pair<int, std::string>> cells = {{0, "S0, 0, 0"}, {3, "S1, 1, 1"}, {9, "S2, 2, 2"}};
  Recalibration hf;
  ASSERT_TRUE(hf.Load(File(" FT817 CW 3630", cells)));
  EXPECT_FLOAT_EQ(hf.Of(4).microvolt, 1.2F);
  Recalibration vhf;
  ASSERT_TRUE(vhf.Load(File(" FT817  145500 kHz", cells)));
  EXPECT_FLOAT_EQ(vhf.Of(4).microvolt, 1.17F);
}

TEST(Recalibration, ExcludesPointsThatDoNotRise) {
  Recalibration table;
  ASSERT_TRUE(table.Load(
      File(" FT840 LSB 3630", {{0, "S0, 0, 0"}, {50, "S5, 10, 4"}, {60, "S6, 9, 3"}, {100, "S9, 60, 24"}})));
  EXPECT_EQ(table.Of(60).s_text, "S5+");
  EXPECT_FLOAT_EQ(table.Of(60).microvolt, 20);
}

TEST(Recalibration, SaysWhatIsWrongAndStaysAsItWas) {
  Recalibration table;
  ASSERT_TRUE(table.Load(File(" FT840 LSB 3630", kCells)));
  EXPECT_FALSE(table.Load(""));
  EXPECT_EQ(table.Load("hello\r\n").fault().reason,
            "This is no calibration file: The first line holds no frequency.");
  EXPECT_EQ(table.Load(" FT840 LSB 3630\r\nS0, 0, 0\r\n").fault().reason,
            "The calibration file is not whole: Input past end of file.");
  EXPECT_EQ(table.Load(File(" FT840 LSB 3630", {{3, "S5, 10"}})).fault().reason,
            "The calibration file is not whole: A line holds fewer than three fields.");
  EXPECT_EQ(table.Load(std::string(2 << 20, 'x')).fault().reason,
            "This is no calibration file: it is too large.");
  EXPECT_FLOAT_EQ(table.Of(150).microvolt, 60);
}

TEST(Recalibration, ChangesValuesAndNotTheLog) {
  const Log log = Read(Text(BlockLines(
      "21-11-2026 01:55:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB  3630 kHz, Loop", {"01:55:31"})));
  Recalibration table;
  ASSERT_TRUE(table.Load(File(" FT840 LSB 3630", kCells)));
  const Record& record = log.records[0];
  ASSERT_EQ(record.raw, 121);
  EXPECT_NEAR(ValueOf(log, record, Unit::kMicrovolt, &table), 31, 1e-5);
  EXPECT_NEAR(ValueOf(log, record, Unit::kMillivoltPerM, &table), 12.4, 1e-5);
  EXPECT_DOUBLE_EQ(ValueOf(log, record, Unit::kSPoint, &table), 5.5);
  EXPECT_NEAR(ValueOf(log, record, Unit::kMicrovolt), 44.2, 1e-5);
}

}  // namespace
}  // namespace orvandi
