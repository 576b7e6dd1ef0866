#include "signal/calibration_text.h"

#include <gtest/gtest.h>

#include "support/reason_of.h"

namespace kestrum::test {
namespace {

std::string Rows(int count) {
  std::string text;
  for (int row = 0; row < count; ++row) text += "S, , \r\n";
  return text;
}

TEST(CalibrationText, TheFirstLineNamesRigModeAndFrequency) {
  struct Row {
    const char* line;
    std::optional<int> rig;
    std::optional<int> mode;
    const char* frequency;
  };
  const Row rows[] = {
      {" FT840 LSB 3630", 2, 2, "3630"},   {"FT817 AMN 145500 kHz", 1, 6, "145500"},
      {"ft857 cw 7050,5", 4, 3, "7050.5"}, {"FT999 XYZ 14200", {}, {}, "14200"},
      {"FT847  3630", 3, {}, "3630"},      {"FT897 FM    29600", 5, 7, "29600"},
  };
  for (const Row& row : rows) {
    const auto header = ReadCalibrationHeader(row.line);
    ASSERT_TRUE(header) << row.line;
    EXPECT_EQ(header.value().rig_model, row.rig) << row.line;
    EXPECT_EQ(header.value().rig_mode, row.mode) << row.line;
    EXPECT_EQ(header.value().frequency, row.frequency) << row.line;
  }
  for (const char* line :
       {"", "FT840", "FT840 LSB", "FT840 LSB ", "FT840 LSB 0", "FT840 LSB -3630", "FT840 LSB x"}) {
    EXPECT_EQ(ReasonOf(ReadCalibrationHeader(line)), "The first line holds no frequency") << line;
  }
}

TEST(CalibrationText, WhatStandsBeforeAFaultIsThere) {
  const std::string head = "FT840 LSB 3630\r\nS0, 0, 0\r\nS1, 0.2, 0.083\r\n";
  const auto text = ReadCalibration(head + "S2, 0.39\r\n");
  ASSERT_TRUE(text);
  EXPECT_EQ(ReasonOf(text.value().fault), "A line holds fewer than three fields");
  EXPECT_EQ(text.value().rows[1], (TableRow{"S1", "0.2", "0.083"}));
  EXPECT_EQ(text.value().rows[2], (TableRow{"S2", "0.39", ""}));

  const auto short_one = ReadCalibration("\xEF\xBB\xBF" + head);
  ASSERT_TRUE(short_one);
  EXPECT_EQ(ReasonOf(short_one.value().fault), "Input past end of file");

  const auto long_cell = ReadCalibration(head + "S2, " + std::string(65, '9') + ", 1\r\n");
  ASSERT_TRUE(long_cell);
  EXPECT_EQ(ReasonOf(long_cell.value().fault), "A line holds a field of more than 64 characters");
  EXPECT_EQ(long_cell.value().rows[2].s, "S2");

  EXPECT_EQ(ReasonOf(ReadCalibration("")), "Input past end of file");
  EXPECT_EQ(ReasonOf(ReadCalibration("hello\r\n" + Rows(256))), "The first line holds no frequency");
}

TEST(CalibrationText, WhatIsWrittenIsReadAgain) {
  const S2FtableRows rows = DefaultTable(Band::kHf);
  const std::string bytes = WriteCalibration(" FT840 LSB 3630 kHz", rows);
  EXPECT_TRUE(bytes.starts_with(" FT840 LSB 3630 kHz\r\nS0, 0, 0\r\nS1, 0.2, 0.083\r\n"));
  EXPECT_TRUE(bytes.ends_with(", , \r\nS9 + 60dB, 50000, 20750\r\n"));
  const auto read = ReadCalibration(bytes);
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value().fault, std::nullopt);
  EXPECT_EQ(read.value().rows, rows);
}

}  // namespace
}  // namespace kestrum::test
