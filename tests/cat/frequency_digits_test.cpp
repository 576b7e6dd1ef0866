#include "cat/frequency_digits.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "text/number_text.h"

namespace kestrum {
namespace {

TEST(TypedKhz, AcceptsACommaAsDecimalPoint) {
  EXPECT_EQ(TypedKhz("7050,5"), 7050.5);
  EXPECT_EQ(TypedKhz("7050.5"), 7050.5);
  EXPECT_EQ(TypedKhz(" 3630 kHz"), 3630);
  EXPECT_EQ(TypedKhz("1,2,3"), 1.2);
  EXPECT_EQ(TypedKhz("xxxxx.xx kHz"), 0);
  EXPECT_EQ(TypedKhz(""), 0);
}

struct DigitsRow {
  std::string khz;
  std::string digits;
};

TEST(PadDigits, GivesSixDigitsOfKhzAndTwoOfTheFraction) {
  const DigitsRow rows[] = {
      {"439700", "43970000"},    {"7050.5", "00705050"},   {"14200", "01420000"},    {" 14200 ", "01420000"},
      {"100", "00010000"},       {"0", "00000000"},        {"", "00000000"},         {"7050.", "00705000"},
      {"7050.25", "00705025"},   {"7050.259", "00705025"}, {"7050.999", "00705099"}, {"29999.99", "02999999"},
      {"144300.05", "14430005"},
  };
  for (const auto& row : rows) EXPECT_EQ(PadDigits(row.khz), row.digits) << row.khz;
}

TEST(PadDigits, PadsUpToAPointAtAnyPlaceFromOneToSeven) {
  const DigitsRow rows[] = {
      {".5", "00000050"},     {"1.5", "00000150"},     {"12.5", "00001250"},     {"123.5", "00012350"},
      {"1234.5", "00123450"}, {"12345.5", "01234550"}, {"123456.5", "12345650"},
  };
  for (const auto& row : rows) EXPECT_EQ(PadDigits(row.khz), row.digits) << row.khz;
}

TEST(PadDigits, OverflowsBeyondSixDigitsBeforeAPoint) {
  EXPECT_EQ(PadDigits("1234567.5"), "Overflow");
  EXPECT_EQ(PadDigits("1234567."), "Overflow");
  EXPECT_EQ(PadDigits(" 12345678.25"), "Overflow");
}

TEST(PadDigits, DoesNotShortenALongTextWithoutPoint) {
  EXPECT_EQ(PadDigits("1234567"), "123456700");
  EXPECT_EQ(PadDigits("12345678"), "1234567800");
  EXPECT_EQ(PadDigits("123456"), "12345600");
}

TEST(PadDigits, GivesEightDigitsThatReadAsTheFrequency) {
  for (int tens_of_hz = 0; tens_of_hz < 99999999; tens_of_hz += 37411) {
    const std::string digits = PadDigits(NumberText(tens_of_hz / 100.0));
    ASSERT_EQ(digits.size(), 8U) << tens_of_hz;
    ASSERT_EQ(Val(digits), tens_of_hz);
  }
}

struct Limits {
  int rig_model;
  double lowest;
  double highest;
};

const std::vector<Limits>& AllLimits() {
  static const std::vector<Limits> limits = {
      {1, 100, 30000},     {1, 50000, 54000},   {1, 76000, 154000},  {1, 430000, 440000}, {2, 100, 30000},
      {3, 100, 36990},     {3, 37000, 76000},   {3, 108000, 174000}, {3, 420000, 512000}, {4, 100, 56000},
      {4, 76000, 108000},  {4, 118000, 164000}, {4, 420000, 470000}, {5, 100, 56000},     {5, 76000, 108000},
      {5, 118000, 164000}, {5, 420000, 470000},
  };
  return limits;
}

TEST(InFreqRange, HasInclusiveBounds) {
  for (const auto& row : AllLimits()) {
    EXPECT_TRUE(InFreqRange(row.rig_model, row.lowest)) << row.rig_model << ": " << row.lowest;
    EXPECT_TRUE(InFreqRange(row.rig_model, row.lowest + 0.01)) << row.rig_model << ": " << row.lowest;
    EXPECT_TRUE(InFreqRange(row.rig_model, row.highest - 0.01)) << row.rig_model << ": " << row.highest;
    EXPECT_TRUE(InFreqRange(row.rig_model, row.highest)) << row.rig_model << ": " << row.highest;
    EXPECT_FALSE(InFreqRange(row.rig_model, row.lowest - 0.01)) << row.rig_model << ": " << row.lowest;
    EXPECT_FALSE(InFreqRange(row.rig_model, row.highest + 0.01)) << row.rig_model << ": " << row.highest;
  }
}

TEST(InFreqRange, IsTheRangesAndNothingElse) {
  for (int rig_model = 1; rig_model <= 5; ++rig_model) {
    for (int khz = 0; khz <= 600000; khz += 5) {
      bool expected = false;
      for (const auto& row : AllLimits())
        expected = expected || (row.rig_model == rig_model && khz >= row.lowest && khz <= row.highest);
      ASSERT_EQ(InFreqRange(rig_model, khz), expected) << rig_model << ": " << khz;
    }
    EXPECT_FALSE(InFreqRange(rig_model, -7050));
  }
}

TEST(InFreqRange, HasNoneForAnUnknownRig) {
  for (const int rig_model : {-1, 0, 6, 99}) EXPECT_FALSE(InFreqRange(rig_model, 7050)) << rig_model;
}

}  // namespace
}  // namespace kestrum
