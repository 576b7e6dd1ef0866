#include "text/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace kestrum {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

struct ValRow {
  std::string text;
  double value;
};

TEST(Val, TakesTheLeadingNumber) {
  const ValRow rows[] = {
      {"3630", 3630},     {"3630 kHz", 3630}, {" 7050.5 kHz", 7050.5}, {"? m", 0},       {"12 m", 12},
      {"5157.00N", 5157}, {".5", 0.5},        {"-.5", -0.5},           {"+7", 7},        {"-7", -7},
      {"5.", 5},          {"007", 7},         {"32768", 32768},        {"0.083", 0.083},
  };
  for (const auto& row : rows) EXPECT_EQ(Val(row.text), row.value) << row.text;
}

TEST(Val, SkipsBlanksWhereverTheyStand) {
  const ValRow rows[] = {
      {"   42", 42},  {"1 2 3", 123},        {"- 5", -5}, {"+ 5", 5},
      {"1 . 5", 1.5}, {" - . 2 5 x", -0.25}, {"\t8", 8},
  };
  for (const auto& row : rows) EXPECT_EQ(Val(row.text), row.value) << row.text;
}

TEST(Val, KnowsNoExponent) {
  const ValRow rows[] = {{"1e3", 1}, {"1E3", 1}, {"2d2", 2}, {"1.5e-3", 1.5}, {"e3", 0}};
  for (const auto& row : rows) EXPECT_EQ(Val(row.text), row.value) << row.text;
}

TEST(Val, GivesZeroWhereNoNumberStands) {
  for (const char* text : {"",    " ",   "-",    "+",   ".",    "-.",  "+.",       "abc",  "x1",    "--5",
                           "+-5", "-+5", "&HFF", "inf", "-inf", "nan", "Overflow", "\xB0", "kHz 5", ",5"}) {
    EXPECT_EQ(Val(text), 0) << text;
  }
}

TEST(Val, StopsAtTheFirstCharacterThatDoesNotBelong) {
  const ValRow rows[] = {{"1.2.3", 1.2}, {"1,5", 1}, {"5-3", 5}, {"5+3", 5}, {"10%", 10}, {"1\r\n2", 1}};
  for (const auto& row : rows) EXPECT_EQ(Val(row.text), row.value) << row.text;
}

TEST(Val, SurvivesEnormousAndVanishingNumbers) {
  const std::string nines(400, '9');
  EXPECT_EQ(Val(nines), std::numeric_limits<double>::max());
  EXPECT_EQ(Val("-" + nines), std::numeric_limits<double>::lowest());
  EXPECT_EQ(Val(nines + ".5"), std::numeric_limits<double>::max());
  EXPECT_EQ(Val("." + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(Val("-0." + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(Val(std::string(400, '0') + "7"), 7);
}

struct NumberRow {
  double value;
  std::string text;
};

TEST(NumberText, HasABlankForTheSignAndNoZeroBeforeThePoint) {
  const NumberRow rows[] = {
      {0, " 0"},     {-0.0, " 0"},   {9600, " 9600"}, {7050, " 7050"},      {0.5, " .5"},
      {-0.5, "-.5"}, {-8, "-8"},     {26.7, " 26.7"}, {-110.67, "-110.67"}, {30000.01, " 30000.01"},
      {100, " 100"}, {1.10, " 1.1"},
  };
  for (const auto& row : rows) EXPECT_EQ(NumberText(row.value), row.text);
}

TEST(NumberText, HasAtMostFifteenDigits) {
  EXPECT_EQ(NumberText(0.1 + 0.2), " .3");
  EXPECT_EQ(NumberText(14074.1 + 0.2), " 14074.3");
  EXPECT_EQ(NumberText(1.0 / 3), " .333333333333333");
  EXPECT_EQ(NumberText(200.0 / 3), " 66.6666666666667");
  EXPECT_EQ(NumberText(123456789012345.0), " 123456789012345");
  EXPECT_EQ(NumberText(1234567890123456.0), " 1234567890123460");
  EXPECT_EQ(NumberText(999999999999999.9), " 1000000000000000");
}

TEST(NumberText, NeverWritesAnExponent) {
  EXPECT_EQ(NumberText(1e20), " 100000000000000000000");
  EXPECT_EQ(NumberText(1e-7), " .0000001");
  EXPECT_EQ(NumberText(-1.5e-10), "-.00000000015");
  EXPECT_EQ(NumberText(std::numeric_limits<double>::max()).size(), 310U);
  EXPECT_EQ(NumberText(std::numeric_limits<double>::max()).find_first_of("eE+"), std::string::npos);
}

TEST(NumberText, WritesNoReadingAsZero) {
  EXPECT_EQ(NumberText(kNotANumber), " 0");
  EXPECT_EQ(NumberText(kInfinity), " 0");
  EXPECT_EQ(NumberText(-kInfinity), " 0");
  EXPECT_EQ(NumberTextSingle(std::numeric_limits<float>::infinity()), " 0");
}

TEST(NumberTextSingle, HasAtMostSevenDigits) {
  EXPECT_EQ(NumberTextSingle(0.1F), " .1");
  EXPECT_EQ(NumberTextSingle(9.0F), " 9");
  EXPECT_EQ(NumberTextSingle(-2.5F), "-2.5");
  EXPECT_EQ(NumberTextSingle(1.0F / 3), " .3333333");
  EXPECT_EQ(NumberTextSingle(20000.0F / 3), " 6666.667");
  EXPECT_EQ(NumberTextSingle(16777216.0F), " 16777220");
  EXPECT_EQ(NumberTextSingle(1e-6F), " .000001");
}

TEST(ShortNumber, IsTheNumberTextWithoutItsBlank) {
  EXPECT_EQ(ShortNumber(9600), "9600");
  EXPECT_EQ(ShortNumber(0.5), ".5");
  EXPECT_EQ(ShortNumber(-0.5), "-.5");
  EXPECT_EQ(ShortNumber(0), "0");
  EXPECT_EQ(ShortNumberSingle(0.1F), ".1");
  EXPECT_EQ(ShortNumberSingle(-3.0F), "-3");
}

TEST(NumberText, ComesBackThroughVal) {
  for (double value = 0.000123; value < 1e12; value *= 7.3) {
    EXPECT_NEAR(Val(NumberText(value)), value, value * 1e-14) << value;
    EXPECT_EQ(NumberText(Val(NumberText(value))), NumberText(value)) << value;
    EXPECT_EQ(NumberText(-value), "-" + ShortNumber(value)) << value;
  }
}

TEST(WithLeadingZero, FillsInOnlyAMissingZero) {
  EXPECT_EQ(WithLeadingZero(".5"), "0.5");
  EXPECT_EQ(WithLeadingZero("-.5"), "-0.5");
  EXPECT_EQ(WithLeadingZero("1.5"), "1.5");
  EXPECT_EQ(WithLeadingZero("-1.5"), "-1.5");
  EXPECT_EQ(WithLeadingZero(" .5"), " .5");
  EXPECT_EQ(WithLeadingZero(""), "");
  EXPECT_EQ(WithLeadingZero("-"), "-");
}

struct RoundRow {
  double value;
  int decimals;
  double rounded;
};

TEST(RoundHalfEven, TakesHalvesToTheEvenNeighbour) {
  const RoundRow rows[] = {
      {0.5, 0, 0},           {1.5, 0, 2},       {2.5, 0, 2},       {3.5, 0, 4},
      {-0.5, 0, 0},          {-1.5, 0, -2},     {-2.5, 0, -2},     {0.125, 2, 0.12},
      {0.375, 2, 0.38},      {6.25, 1, 6.2},    {6.75, 1, 6.8},    {-6.25, 1, -6.2},
      {26.6666667, 1, 26.7}, {2.4999999, 0, 2}, {2.5000001, 0, 3}, {-2.5000001, 0, -3},
      {110.669, 2, 110.67},  {5, 2, 5},
  };
  for (const auto& row : rows)
    EXPECT_EQ(RoundHalfEven(row.value, row.decimals), row.rounded) << row.value << " to " << row.decimals;
}

TEST(RoundHalfEven, LooksAtTheValueScaledInDouble) {
  EXPECT_EQ(RoundHalfEven(1.005, 2), 1.0);   // 100.49999999999999
  EXPECT_EQ(RoundHalfEven(1.115, 2), 1.12);  // 111.50000000000001
}

TEST(RoundHalfEven, LeavesWhatCannotBeScaled) {
  EXPECT_EQ(RoundHalfEven(kInfinity, 1), kInfinity);
  EXPECT_EQ(RoundHalfEven(1e308, 2), 1e308);
  EXPECT_TRUE(std::isnan(RoundHalfEven(kNotANumber, 1)));
}

TEST(RoundToInt, RoundsHalfToEvenWithinTheRangeOfInt) {
  EXPECT_EQ(RoundToInt(2.5), 2);
  EXPECT_EQ(RoundToInt(3.5), 4);
  EXPECT_EQ(RoundToInt(-2.5), -2);
  EXPECT_EQ(RoundToInt(2.6), 3);
  EXPECT_EQ(RoundToInt(1e10), 2147483647);
  EXPECT_EQ(RoundToInt(-1e10), -2147483647 - 1);
  EXPECT_EQ(RoundToInt(kInfinity), 2147483647);
  EXPECT_EQ(RoundToInt(kNotANumber), 0);
}

struct PatternRow {
  double value;
  int integer_digits;
  int decimals;
  std::string text;
};

TEST(FixedPattern, RoundsHalvesAwayFromZeroOnTheDecimalText) {
  const PatternRow rows[] = {
      {6.25, 3, 1, "006.3"},        {6.35, 3, 1, "006.4"},
      {6.24, 3, 1, "006.2"},        {-6.25, 3, 1, "-006.3"},
      {1.005, 1, 2, "1.01"},        {0.05, 3, 1, "000.1"},
      {0.049, 3, 1, "000.0"},       {0.005, 3, 1, "000.0"},
      {0.95, 3, 1, "001.0"},        {999.95, 3, 1, "1000.0"},
      {0, 3, 1, "000.0"},           {12345.6, 3, 1, "12345.6"},
      {7, 3, 1, "007.0"},           {-0.04, 3, 1, "000.0"},
      {-0.05, 3, 1, "-000.1"},      {100, 3, 1, "100.0"},
      {52.123456, 2, 4, "52.1235"}, {9.99996, 2, 4, "10.0000"},
      {0.5, 1, 1, "0.5"},           {1e20, 1, 1, "100000000000000000000.0"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(FixedPattern(row.value, row.integer_digits, row.decimals), row.text) << row.value;
}

TEST(FixedPattern, WritesNoReadingAsZeros) {
  EXPECT_EQ(FixedPattern(kNotANumber, 3, 1), "000.0");
  EXPECT_EQ(FixedPattern(-kInfinity, 3, 1), "000.0");
}

TEST(FixedPattern, RisesWithTheValue) {
  std::string last = FixedPattern(0, 3, 1);
  for (int hundredths = 1; hundredths < 20000; ++hundredths) {
    const std::string text = FixedPattern(hundredths / 100.0, 3, 1);
    ASSERT_LE(last, text);
    ASSERT_EQ(text.size(), 5U);
    last = text;
  }
}

TEST(ThreeDigits, PadsOnTheLeft) {
  EXPECT_EQ(ThreeDigits(7), "007");
  EXPECT_EQ(ThreeDigits(0), "000");
  EXPECT_EQ(ThreeDigits(42), "042");
  EXPECT_EQ(ThreeDigits(255), "255");
  EXPECT_EQ(ThreeDigits(1000), "1000");
  EXPECT_EQ(ThreeDigits(-5), "0-5");
  EXPECT_EQ(ThreeDigits(-50), "-50");
}

}  // namespace
}  // namespace kestrum
