#include "signal/calibration_table.h"

#include <gtest/gtest.h>

#include "text/number_text.h"

namespace kestrum {
namespace {

class CalibrationTableTest : public ::testing::Test {
 protected:
  State state;
  Forms forms;
  CalibrationTable table{state, forms};

  TableRow Converted(int raw) {
    table.ConvertRSSI(raw);
    return table.Current();
  }
};

struct Conversion {
  int raw;
  TableRow row;
};

const DefaultPoint kDefaults[] = {
    {0, {"S0", "0", "0"}},
    {1, {"S1", "0.2", "0.083"}},
    {2, {"S2", "0.39", "0.16"}},
    {8, {"S3", "0.78", "0.32"}},
    {18, {"S4", "1.56", "0.65"}},
    {32, {"S5", "3.13", "1.30"}},
    {50, {"S6", "6.25", "2.59"}},
    {72, {"S7", "12.5", "5.19"}},
    {98, {"S8", "25", "10.4"}},
    {128, {"S9", "50", "20.7"}},
    {162, {"S9 + 10dB", "158", "65"}},
    {180, {"S9 + 20dB", "500", "207"}},
    {198, {"S9 + 30dB", "1580", "656"}},
    {216, {"S9 + 40dB", "5000", "2075"}},
    {234, {"S9 + 50dB", "15800", "6560"}},
    {255, {"S9 + 60dB", "50000", "20750"}},
};

const DefaultPoint kDefaultsAboveHF[] = {
    {0, {"S0", "0", "0"}},
    {1, {"S1", "0.02", "0.0083"}},
    {2, {"S2", "0.039", "0.016"}},
    {8, {"S3", "0.078", "0.032"}},
    {18, {"S4", "0.156", "0.065"}},
    {32, {"S5", "0.313", "0.13"}},
    {50, {"S6", "0.625", "0.259"}},
    {72, {"S7", "1.25", "0.519"}},
    {98, {"S8", "2.5", "1.04"}},
    {128, {"S9", "5", "2.07"}},
    {162, {"S9 + 10dB", "15.8", "6.5"}},
    {180, {"S9 + 20dB", "50", "20.7"}},
    {198, {"S9 + 30dB", "158", "65.6"}},
    {216, {"S9 + 40dB", "500", "207.5"}},
    {234, {"S9 + 50dB", "1580", "656"}},
    {255, {"S9 + 60dB", "5000", "2075"}},
};

S2FtableRows RowsOf(const DefaultPoint (&points)[16]) {
  S2FtableRows rows;
  for (const auto& point : points) rows[point.row] = point.cells;
  return rows;
}

TEST_F(CalibrationTableTest, DefaultTableHoldsSixteenPointsAndNothingElse) {
  table.S2Ftable[77] = {"left over", "1", "2"};
  table.DefaultCalibration(false);
  EXPECT_EQ(table.S2Ftable, RowsOf(kDefaults));
}

TEST_F(CalibrationTableTest, DefaultTableIsATenthAbove30MHz) {
  state.AboveHF = true;
  table.DefaultCalibration(false);
  EXPECT_EQ(table.S2Ftable, RowsOf(kDefaultsAboveHF));
}

TEST(ScaleTenth, GivesTheTenthAsAPlainDecimal) {
  const std::pair<const char*, const char*> rows[] = {
      {"0.39", "0.039"}, {"0.2", "0.02"},   {"0.083", "0.0083"}, {"1.30", "0.13"}, {"20.7", "2.07"},
      {"50000", "5000"}, {"20750", "2075"}, {"10", "1"},         {"0", "0"},       {"", "0"},
      {"none", "0"},     {" 7", "0.7"},     {"12.5 uV", "1.25"}, {"-5", "-.5"},    {"0.00001", "0.000001"},
  };
  for (const auto& [text, tenth] : rows) EXPECT_EQ(ScaleTenth(text), tenth) << text;
}

TEST(RSSItoDBm, IsThePowerIn50OhmWithoutThirtyMore) {
  const std::pair<const char*, const char*> rows[] = {
      {"20.7", "-110.67"},
      {" 20.7", "-110.67"},
      {"-20.7", "-110.67"},
      {"1", "-136.99"},
      {"1000", "-76.99"},
      {"20750", "-50.65"},
      {"100000000", " 23.01"},
      {"0", ""},
      {"", ""},
      {"???", ""},
      {"??x", ""},
  };
  for (const auto& [text, dbm] : rows) EXPECT_EQ(RSSItoDBm(text), dbm) << text;
}

TEST_F(CalibrationTableTest, ConvertsByTheDefaultTable) {
  table.DefaultCalibration(false);
  const Conversion rows[] = {
      {0, {"S0", "0", "0"}},
      {1, {"S1", "0.2", "0.083"}},
      {2, {"S2", "0.39", "0.16"}},
      {3, {"S2+", " .5", " .19"}},
      {4, {"S2+", " .5", " .21"}},
      {5, {"S2+", " .6", " .24"}},
      {8, {"S3", "0.78", "0.32"}},
      {10, {"S3+", " .9", " .39"}},
      {20, {"S4+", " 1.8", " .74"}},
      {32, {"S5", "3.13", "1.30"}},
      {40, {"S5+", " 4.5", " 1.87"}},
      {60, {"S6+", " 9.1", " 3.77"}},
      {80, {"S7+", " 16.3", " 6.79"}},
      {100, {"S8+", " 26.7", " 11.09"}},
      {128, {"S9", "50", "20.7"}},
      {129, {"S9+", " 53.2", " 22"}},
      {162, {"S9 + 10dB", "158", "65"}},
      {170, {"S9 + 10dB", " 310", " 128.11"}},
      {190, {"S9 + 20dB", " 1100", " 456.44"}},
      {200, {"S9 + 30dB", " 1960", " 813.67"}},
      {220, {"S9 + 40dB", " 7400", " 3071.67"}},
      {233, {"S9 + 40dB", " 15200", " 6310.83"}},
      {234, {"S9 + 50dB", "15800", "6560"}},
      {235, {"S?", "???", "???"}},
      {240, {"S?", "???", "???"}},
      {254, {"S?", "???", "???"}},
      {255, {"S9 + 60dB", "50000", "20750"}},
  };
  for (const auto& [raw, row] : rows) EXPECT_EQ(Converted(raw), row) << raw;
}

TEST_F(CalibrationTableTest, MicrovoltsHaveTwoDecimalsAbove30MHz) {
  state.AboveHF = true;
  table.DefaultCalibration(false);
  const Conversion rows[] = {
      {3, {"S2+", " .05", " .02"}}, {5, {"S2+", " .06", " .02"}},          {100, {"S8+", " 2.67", " 1.11"}},
      {128, {"S9", "5", "2.07"}},   {170, {"S9 + 10dB", " 31", " 12.81"}}, {240, {"S?", "???", "???"}},
  };
  for (const auto& [raw, row] : rows) EXPECT_EQ(Converted(raw), row) << raw;
}

// Each raw value below the last gap has its own figures, rising with it, between those of its neighbours.
TEST_F(CalibrationTableTest, FiguresRiseWithTheRawValue) {
  for (const bool above : {false, true}) {
    state.AboveHF = above;
    table.DefaultCalibration(false);
    TableRow before = Converted(0);
    for (int raw = 1; raw <= 234; ++raw) {
      const TableRow row = Converted(raw);
      const double slack_uv = above ? 0.005 : 0.05;  // exact points are not rounded, those between are
      EXPECT_GE(Val(row.microvolt), Val(before.microvolt) - slack_uv) << raw;
      EXPECT_GE(Val(row.millivolt_per_metre), Val(before.millivolt_per_metre) - 0.005) << raw;
      EXPECT_TRUE(row.s.starts_with("S")) << raw;
      before = row;
    }
    for (int raw = 235; raw <= 254; ++raw) EXPECT_EQ(Converted(raw), (TableRow{"S?", "???", "???"})) << raw;
  }
}

TEST_F(CalibrationTableTest, ConversionLeavesTheCalibrationAlone) {
  table.DefaultCalibration(false);
  for (int raw = 0; raw <= 255; ++raw) table.ConvertRSSI(raw);
  for (std::size_t row = 0; row < kCurrentRow; ++row) {
    EXPECT_EQ(table.S2Ftable[row], RowsOf(kDefaults)[row]) << row;
  }
}

TEST_F(CalibrationTableTest, ValuesBeyondTheScaleAreTakenAsItsEnds) {
  table.DefaultCalibration(false);
  EXPECT_EQ(Converted(992), (TableRow{"S9 + 60dB", "50000", "20750"}));
  EXPECT_EQ(Converted(-1), (TableRow{"S0", "0", "0"}));
}

// Kept on purpose: an empty table says "unknown" once and then leaves the reading as it stands.
TEST_F(CalibrationTableTest, EmptyTableIsUnknownOnceAndThenStays) {
  table.ClearCalibration(false);
  EXPECT_EQ(Converted(100), (TableRow{"S?", "???", "???"}));
  table.S2Ftable[kCurrentRow] = {"S5", "3", "1"};
  EXPECT_EQ(Converted(200), (TableRow{"S5", "3", "1"}));
}

// Kept on purpose: cells that cannot be computed keep the text of the reading before.
TEST_F(CalibrationTableTest, TableOfMeasuredVoltagesOnly) {
  table.S2Ftable[10] = {"", "1", ""};
  table.S2Ftable[20] = {"", "2", ""};
  EXPECT_EQ(Converted(15), (TableRow{"S?", "???", "???"})) << "no mV/m to start from";
  EXPECT_EQ(Converted(15), (TableRow{"S?", " 1.5", "???"})) << "no S text below: the old one stays";
  EXPECT_EQ(Converted(10), (TableRow{"S?", " 1", "???"})) << "the lower point itself";
}

TEST_F(CalibrationTableTest, STextOfAMeasuredPointComesFromBelow) {
  table.S2Ftable[0] = {"S0", "0", "0"};
  table.S2Ftable[10] = {"", "1", ""};
  table.S2Ftable[20] = {"S3", "2", "5"};
  table.S2Ftable[30] = {"S4", "3", "9"};
  EXPECT_EQ(Converted(15), (TableRow{"S0+", " 1.5", " 3.75"}));
  table.S2Ftable[0].s = "S9 + 10dB";
  EXPECT_EQ(Converted(15).s, "S9 + 10dB+");
}

TEST_F(CalibrationTableTest, OnlyTwoCharactersGetAPlus) {
  table.S2Ftable[20] = {"S4", "3", "9"};
  table.S2Ftable[30] = {"S5", "4", "10"};
  const std::pair<const char*, const char*> rows[] = {
      {"S3", "S3+"}, {"Q", "Q"}, {"S10", "S10"}, {"S9 + 20dB", "S9 + 20dB"}};
  for (const auto& [text, shown] : rows) {
    table.S2Ftable[10] = {text, "1", "1"};
    EXPECT_EQ(Converted(15).s, shown) << text;
  }
}

TEST_F(CalibrationTableTest, UpperFieldPointOnTheLastRowShowsItsOwnSign) {
  table.S2Ftable[0] = {"S0", "0", "0"};
  table.S2Ftable[10] = {"S1", "1", "1"};
  table.S2Ftable[100] = {"", "50", ""};
  table.S2Ftable[255] = {"S9", "", "20"};
  EXPECT_EQ(Converted(50), (TableRow{"S1+", " 22.8", "??x"}));
}

TEST_F(CalibrationTableTest, AboveTheLastPointTheReadingBeforeStays) {
  table.S2Ftable[100] = {"S5", "5", "2"};
  table.S2Ftable[200] = {"S6", "6", "3"};
  EXPECT_EQ(Converted(210), (TableRow{"S?", "???", "???"})) << "nothing shown yet";
  EXPECT_EQ(Converted(150), (TableRow{"S5+", " 5.5", " 2.5"}));
  EXPECT_EQ(Converted(210), (TableRow{"S5+", " 5.5", " 2.5"}));
  EXPECT_EQ(Converted(255), (TableRow{"S5+", " 5.5", " 2.5"}));
}

TEST_F(CalibrationTableTest, FallingFieldStrengthKeepsTheTextBefore) {
  table.S2Ftable[10] = {"S1", "1", "9"};
  table.S2Ftable[20] = {"S2", "2", "9"};
  table.S2Ftable[30] = {"S3", "3", "8"};
  table.S2Ftable[kCurrentRow] = {"S1", "1", "9.5"};
  EXPECT_EQ(Converted(15), (TableRow{"S1+", " 1.5", "9.5"}));
  EXPECT_EQ(Converted(25), (TableRow{"S2+", " 2.5", "9.5"}));
}

TEST_F(CalibrationTableTest, UpperVoltageMustBeHigherThanTheLowerOne) {
  table.S2Ftable[10] = {"S1", "2", "1"};
  table.S2Ftable[20] = {"S2", "1", ""};
  table.S2Ftable[30] = {"S3", "4", "3"};
  EXPECT_EQ(Converted(12), (TableRow{"S1+", " 2.2", " 1.2"}));
}

TEST_F(CalibrationTableTest, WithoutALowerFieldPointTheLineStartsAtTheLowerVoltage) {
  table.S2Ftable[10] = {"S1", "1", ""};
  table.S2Ftable[20] = {"S2", "2", "5"};
  EXPECT_EQ(Converted(15), (TableRow{"S1+", " 1.5", " 2.5"}));
}

TEST_F(CalibrationTableTest, WithoutAnUpperPointTheFieldLineRunsToTheFirstRow) {
  table.S2Ftable[0] = {"S0", "0", "100"};
  table.S2Ftable[50] = {"S1", "1", "10"};
  table.S2Ftable[kCurrentRow] = {"S1", "1", "10"};
  EXPECT_EQ(Converted(60), (TableRow{"S1", "1", "-8"}));
}

TEST_F(CalibrationTableTest, TidyRemovesPointsThatDoNotRise) {
  table.S2Ftable[0] = {"S0", "1", "0"};
  table.S2Ftable[1] = {"S1", "1", "0.1"};  // equal
  table.S2Ftable[2] = {"S2", "2", "0.2"};
  table.S2Ftable[3] = {"text only", "", "7"};  // no voltage: not looked at
  table.S2Ftable[4] = {"", "1.99", "5"};       // falls
  table.S2Ftable[5] = {"S3", "none", "5"};     // reads as 0
  table.S2Ftable[6] = {"S4", " 3", "0.3"};
  table.S2Ftable[255] = {"S5", "3.5", "0.4"};
  table.S2Ftable[kCurrentRow] = {"S0", "0.5", "0"};
  table.TidyCalibration();
  S2FtableRows expected;
  expected[0] = {"S0", "1", "0"};
  expected[2] = {"S2", "2", "0.2"};
  expected[3] = {"text only", "", "7"};
  expected[6] = {"S4", " 3", "0.3"};
  expected[255] = {"S5", "3.5", "0.4"};
  expected[kCurrentRow] = {"S0", "0.5", "0"};
  EXPECT_EQ(table.S2Ftable, expected);
}

TEST_F(CalibrationTableTest, TidyComparesInSinglePrecision) {
  table.S2Ftable[0] = {"S0", "1", ""};
  table.S2Ftable[1] = {"S1", "1.00000001", ""};
  table.TidyCalibration();
  EXPECT_EQ(table.S2Ftable[1], TableRow());
}

TEST_F(CalibrationTableTest, DefaultTablesAreTidy) {
  for (const bool above : {false, true}) {
    state.AboveHF = above;
    table.DefaultCalibration(false);
    const auto rows = table.S2Ftable;
    table.TidyCalibration();
    EXPECT_EQ(table.S2Ftable, rows);
  }
}

TEST_F(CalibrationTableTest, ClearingLoadsTheEditorOnceUnlessItAsksItself) {
  int loads = 0;
  forms.form3.load = [&] {
    ++loads;
    forms.form3.loaded = true;
    EXPECT_EQ(table.S2Ftable[5].s, "S5") << "loaded before the table is emptied";
  };
  table.S2Ftable[5] = {"S5", "1", "1"};
  table.S2Ftable[kCurrentRow] = {"S5", "1", "1"};
  table.ClearCalibration(true);
  EXPECT_EQ(loads, 0);
  EXPECT_EQ(table.S2Ftable, S2FtableRows());

  table.S2Ftable[5] = {"S5", "1", "1"};
  table.ClearCalibration(false);
  EXPECT_EQ(loads, 1);
  EXPECT_FALSE(forms.form3.visible);
  table.DefaultCalibration(false);
  EXPECT_EQ(loads, 1) << "it is loaded already";
}

TEST_F(CalibrationTableTest, StatusLabelShowsRigAndCalibration) {
  const std::string& caption = forms.form1.lblStatusCaption.caption;
  table.ShowStatusCaption("Cat FT817 Com1", "");
  EXPECT_EQ(caption, "Cat FT817 Com1  ");
  table.ClearCalibration(true);
  EXPECT_EQ(caption, "Cat FT817 Com1  Calibration cleared.");
  table.DefaultCalibration(true);
  EXPECT_EQ(caption, "Cat FT817 Com1  Default Calibration Table");
  table.ShowStatusCaption("Cat FT840 Com2", "");
  EXPECT_EQ(caption, "Cat FT840 Com2  Default Calibration Table");
  table.ShowStatusCaption("", "/car/Calibration1.cfg");
  EXPECT_EQ(caption, "Cat FT840 Com2  /car/Calibration1.cfg");
}

// A point above with the same voltage is no upper point: the line runs to the next one that is higher.
TEST_F(CalibrationTableTest, AnEqualVoltageAboveIsPassedOver) {
  table.S2Ftable[10] = {"S1", "2", "1"};
  table.S2Ftable[20] = {"S2", "2", ""};
  table.S2Ftable[30] = {"S3", "4", "3"};
  EXPECT_EQ(Converted(12), (TableRow{"S1+", " 2.2", " 1.2"}));
}

TEST_F(CalibrationTableTest, TheUpperFieldPointMayBeTheVeryNextRow) {
  table.S2Ftable[10] = {"", "1", "5"};
  table.S2Ftable[11] = {"S2", "2", "3"};
  table.S2Ftable[30] = {"S3", "3", "8"};
  table.S2Ftable[kCurrentRow] = {"S1", "1", "9.5"};
  EXPECT_EQ(Converted(10).millivolt_per_metre, "9.5") << "the next row is lower: the text before stays";
  table.S2Ftable[254] = {"", "4", "9"};
  table.S2Ftable[255] = {"", "", "10"};
  EXPECT_EQ(Converted(254).millivolt_per_metre, "??x") << "the next row is the last";
}

TEST_F(CalibrationTableTest, TheUpperVoltageMayBeTheVeryNextRow) {
  table.S2Ftable[254] = {"", "4", "9"};
  table.S2Ftable[255] = {"S9", "5", "10"};
  EXPECT_EQ(Converted(254), (TableRow{"S?", "???", "???"}));
}

TEST_F(CalibrationTableTest, TidyLooksAtTheLastRowToo) {
  table.S2Ftable[10] = {"S1", "5", "1"};
  table.S2Ftable[255] = {"S2", "5", "2"};
  table.TidyCalibration();
  EXPECT_EQ(table.S2Ftable[255], TableRow());
}

// Every operation is rounded by itself: fused into one, slope and addition give 386.65 here.
TEST_F(CalibrationTableTest, EachStepIsRoundedToSingle) {
  table.S2Ftable[70] = {"S5", "1", "169.5"};
  table.S2Ftable[110] = {"S6", "2", "503.6"};
  table.S2Ftable[200] = {"S7", "3", "600"};
  EXPECT_EQ(Converted(96).millivolt_per_metre, " 386.66");
}

}  // namespace
}  // namespace kestrum
