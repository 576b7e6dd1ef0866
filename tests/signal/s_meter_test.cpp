#include "signal/s_meter.h"

#include <gtest/gtest.h>

#include "signal/signal_bench.h"

namespace kestrum {
namespace {

class SMeterTest : public ::testing::Test {
 protected:
  test::SignalBench bench;
  Form1& form = bench.forms.form1;
  Form5& minimal = bench.forms.form5;
  Settings& settings = bench.state.settings;

  const std::string& Shown() { return form.lblFieldStrenght.caption; }
};

TEST_F(SMeterTest, ShowsBarAndSText) {
  bench.state.RssiRaw = 128;
  bench.meter.ShowRSSIStype();
  EXPECT_EQ(form.ProgressBar1.value, 128);
  EXPECT_EQ(form.lblRSSI.caption, "S9");
  EXPECT_EQ(minimal.ProgressBar1.value, 0) << "the minimal display is not chosen";
  bench.state.RssiRaw = 100;
  form.mnuMinimalDisplay.checked = true;
  bench.meter.ShowRSSIStype();
  EXPECT_EQ(form.ProgressBar1.value, 100);
  EXPECT_EQ(minimal.ProgressBar1.value, 100);
  EXPECT_EQ(form.lblRSSI.caption, "S8+");
}

TEST_F(SMeterTest, ShowsFieldStrengthInItsUnit) {
  struct Row {
    int unit;
    int raw;
    const char* text;
  };
  const Row rows[] = {
      {1, 128, "050.0 uV"},   {1, 100, "026.7 uV"},   {1, 50, "006.3 uV"},     {1, 0, "000.0 uV"},
      {1, 255, "50000.0 uV"}, {1, 240, "000.0 uV"},   {2, 128, "020.7 mV/m"},  {2, 100, "011.1 mV/m"},
      {2, 32, "001.3 mV/m"},  {2, 240, "000.0 mV/m"}, {3, 128, "-110.67 dBm"}, {3, 255, "-50.65 dBm"},
      {3, 0, " dBm"},         {3, 240, " dBm"},
  };
  for (const auto& [unit, raw, text] : rows) {
    settings.FieldStrengthUnit = static_cast<std::int16_t>(unit);
    bench.state.RssiRaw = static_cast<std::int16_t>(raw);
    bench.meter.ShowRSSIStype();
    EXPECT_EQ(Shown(), text) << unit << " " << raw;
  }
}

TEST_F(SMeterTest, LargeAndHalfValuesFollowThePattern) {
  settings.FieldStrengthUnit = 1;
  const std::pair<const char*, const char*> rows[] = {
      {"1234.56", "1234.6 uV"}, {"6.25", "006.3 uV"}, {"0.05", "000.1 uV"}, {"26.7", "026.7 uV"}};
  for (const auto& [microvolt, text] : rows) {
    bench.table.S2Ftable[7] = {"S2", microvolt, "1"};
    bench.state.RssiRaw = 7;
    bench.meter.ShowRSSIStype();
    EXPECT_EQ(Shown(), text);
  }
}

TEST_F(SMeterTest, UnknownUnitLeavesTheText) {
  form.lblFieldStrenght.caption = "as before";
  for (const int unit : {0, 4, -1}) {
    settings.FieldStrengthUnit = static_cast<std::int16_t>(unit);
    bench.meter.ShowRSSIStype();
    EXPECT_EQ(Shown(), "as before") << unit;
  }
}

// Kept on purpose: dBm are made from the mV/m column, whatever the uV column says.
TEST_F(SMeterTest, DecibelsComeFromTheFieldColumn) {
  settings.FieldStrengthUnit = 3;
  bench.table.S2Ftable[7] = {"S2", "1000", "20.7"};
  bench.state.RssiRaw = 7;
  bench.meter.ShowRSSIStype();
  EXPECT_EQ(Shown(), "-110.67 dBm");
}

// Kept on purpose: the first click of a run gives uV, whatever the stored unit is.
TEST_F(SMeterTest, UnitClicksCycleFromMicrovolts) {
  bench.state.RssiRaw = 128;
  for (const int stored : {1, 2, 3, 0}) {
    test::SignalBench run;
    run.state.settings.FieldStrengthUnit = static_cast<std::int16_t>(stored);
    run.state.RssiRaw = 128;
    const char* const expected[] = {"050.0 uV", "020.7 mV/m", "-110.67 dBm", "050.0 uV", "020.7 mV/m"};
    const int units[] = {1, 2, 3, 1, 2};
    for (std::size_t click = 0; click < 5; ++click) {
      run.forms.form1.lblFieldStrenght.click();
      EXPECT_EQ(run.forms.form1.lblFieldStrenght.caption, expected[click]) << stored << " " << click;
      EXPECT_EQ(run.state.settings.FieldStrengthUnit, units[click]);
    }
  }
}

TEST_F(SMeterTest, ReadingShowsItsToolTipOnTheBar) {
  bench.Read(128);
  EXPECT_EQ(form.ProgressBar1.tool_tip, "RSSI =  128> 255 Click me to change!");
  EXPECT_EQ(minimal.ProgressBar1.tool_tip, "");
  EXPECT_EQ(form.lblRSSI.caption, "S9");
  form.mnuMinimalDisplay.checked = true;
  bench.Read(0);
  EXPECT_EQ(form.ProgressBar1.tool_tip, "RSSI =  0> 255 Click me to change!");
  EXPECT_EQ(minimal.ProgressBar1.tool_tip, "RSSI =  0> 255 Click me to change!");
}

TEST_F(SMeterTest, ShowingAloneLeavesTheToolTip) {
  form.ProgressBar1.tool_tip = "as before";
  bench.state.RssiRaw = 50;
  bench.meter.ShowRSSIStype();
  EXPECT_EQ(form.ProgressBar1.tool_tip, "as before");
}

TEST_F(SMeterTest, BarClickInvertsTheStyleOfTheClickedBar) {
  settings.ProgressBarMode = false;
  bench.meter.ShowAtStart();
  EXPECT_FALSE(form.ProgressBar1.segments);
  EXPECT_FALSE(minimal.ProgressBar1.segments);
  form.ProgressBar1.click();
  EXPECT_TRUE(settings.ProgressBarMode);
  EXPECT_TRUE(form.ProgressBar1.segments);
  EXPECT_FALSE(minimal.ProgressBar1.segments) << "only the clicked bar";
  minimal.ProgressBar1.click();
  EXPECT_FALSE(settings.ProgressBarMode);
  EXPECT_FALSE(minimal.ProgressBar1.segments);
  EXPECT_TRUE(form.ProgressBar1.segments);
}

TEST_F(SMeterTest, SegmentsAreRestoredAtStart) {
  settings.ProgressBarMode = true;
  form.ProgressBar1.segments = false;
  minimal.ProgressBar1.segments = false;
  bench.meter.ShowAtStart();
  EXPECT_TRUE(form.ProgressBar1.segments);
  EXPECT_TRUE(minimal.ProgressBar1.segments);
}

TEST_F(SMeterTest, AverageRunsFromTheSecondSampleOn) {
  bench.meter.AverageRSSIValue(0, true);
  EXPECT_EQ(bench.meter.AveragedRssi(), 0);
  const std::pair<int, int> rows[] = {{10, 10}, {20, 20}, {30, 25}, {40, 30}};
  for (const auto& [sample, average] : rows) {
    bench.meter.AverageRSSIValue(sample, false);
    EXPECT_EQ(bench.meter.AveragedRssi(), average) << sample;
  }
}

TEST_F(SMeterTest, AverageRoundsHalvesToEven) {
  const std::vector<std::pair<std::vector<int>, int>> rows = {
      {{0, 10, 11}, 10}, {{0, 11, 12}, 12}, {{0, 10, 10, 11}, 10}, {{0, 11, 11, 10}, 11}};
  for (const auto& [samples, average] : rows) {
    bench.meter.AverageRSSIValue(0, true);
    for (const int sample : samples) bench.meter.AverageRSSIValue(sample, false);
    EXPECT_EQ(bench.meter.AveragedRssi(), average);
  }
}

TEST_F(SMeterTest, ResetEmptiesTheAverageAndTurnsTheSquelchRed) {
  for (const int sample : {100, 110, 120}) bench.meter.AverageRSSIValue(sample, false);
  EXPECT_EQ(form.lblSquelch.back_color, Color::kGreen);
  bench.meter.AverageRSSIValue(77, true);
  EXPECT_EQ(bench.meter.AveragedRssi(), 0);
  EXPECT_EQ(form.lblSquelch.back_color, Color::kRed);
  EXPECT_EQ(static_cast<int>(form.lblSquelch.back_color), 255);
  bench.meter.AverageRSSIValue(50, false);
  EXPECT_EQ(bench.meter.AveragedRssi(), 50) << "counting starts anew";
}

TEST_F(SMeterTest, SquelchDropsWeakSamples) {
  settings.SquelchLevel = 50;
  bench.meter.AverageRSSIValue(0, true);
  bench.meter.AverageRSSIValue(49, false);
  EXPECT_EQ(bench.meter.AveragedRssi(), 0);
  EXPECT_EQ(form.lblSquelch.back_color, Color::kRed);
  bench.meter.AverageRSSIValue(50, false);
  EXPECT_EQ(bench.meter.AveragedRssi(), 50);
  EXPECT_EQ(form.lblSquelch.back_color, Color::kGreen);
  EXPECT_EQ(static_cast<int>(form.lblSquelch.back_color), 65280);
  bench.meter.AverageRSSIValue(10, false);
  EXPECT_EQ(bench.meter.AveragedRssi(), 50);
  EXPECT_EQ(form.lblSquelch.back_color, Color::kGreen) << "the colour stays";
}

TEST_F(SMeterTest, SquelchSliderSetsTheLevel) {
  form.sldSquelch.SetValue(120);
  EXPECT_EQ(settings.SquelchLevel, 120);
}

TEST_F(SMeterTest, AveragingTimerReadsTheRigAndCollects) {
  settings.AverageRSSI = true;
  bench.meter.RunAveraging();
  bench.meter.ShowAveraging();
  bench.world.serial.replies.push_back(test::Bytes({72, 0, 0, 0, 247}));
  bool running_while_read = true;
  bench.rig.on_reading = [&] {
    running_while_read = form.tmrAverageRSSI.enabled;
    bench.meter.ShowReading();
  };
  form.tmrAverageRSSI.tick();
  EXPECT_EQ(bench.world.serial.written.size(), 1U);
  EXPECT_FALSE(running_while_read);
  EXPECT_TRUE(form.tmrAverageRSSI.enabled);
  EXPECT_EQ(bench.meter.AveragedRssi(), 72);
  EXPECT_EQ(form.lblRSSI.caption, "S7") << "each single reading is shown";
}

TEST_F(SMeterTest, AveragingTimerRestsWhenAveragingIsOff) {
  settings.AverageRSSI = false;
  form.tmrAverageRSSI.tick();
  EXPECT_TRUE(bench.world.serial.written.empty());
  EXPECT_FALSE(form.tmrAverageRSSI.enabled);
}

TEST_F(SMeterTest, AveragingMenuOnlyLeavesARequest) {
  form.mnuAverageRSSI.click();
  EXPECT_TRUE(bench.state.AverageRequest);
  EXPECT_FALSE(settings.AverageRSSI);
  EXPECT_FALSE(form.tmrAverageRSSI.enabled);
}

TEST_F(SMeterTest, AveragingOnShowsTheSliderAndASlimBar) {
  settings.AverageRSSI = true;
  form.tmrAverageRSSI.interval_ms = 1000;
  bench.meter.RunAveraging();
  bench.meter.ShowAveraging();
  EXPECT_TRUE(form.tmrAverageRSSI.enabled);
  EXPECT_EQ(form.tmrAverageRSSI.interval_ms, 300);
  EXPECT_TRUE(form.sldSquelch.visible);
  EXPECT_EQ(form.ProgressBar1.top, 2040);
  EXPECT_EQ(form.ProgressBar1.height, 255);
}

TEST_F(SMeterTest, AveragingOffHidesTheSlider) {
  settings.AverageRSSI = true;
  bench.meter.RunAveraging();
  bench.meter.ShowAveraging();
  settings.AverageRSSI = false;
  bench.meter.RunAveraging();
  bench.meter.ShowAveraging();
  EXPECT_FALSE(form.tmrAverageRSSI.enabled);
  EXPECT_FALSE(form.sldSquelch.visible);
  EXPECT_EQ(form.ProgressBar1.top, 2140);
  EXPECT_EQ(form.ProgressBar1.height, 456);
}

TEST_F(SMeterTest, StartShowsToolTipsAndRanges) {
  settings.SquelchLevel = 42;
  bench.meter.ShowAtStart();
  EXPECT_EQ(form.sldSquelch.tool_tip, "Squelch adjust only if averaged");
  EXPECT_EQ(form.lblSquelch.tool_tip,
            "Red = No or reset average RSSI values, Green = collecting average RSSI");
  EXPECT_EQ(form.lblFieldStrenght.tool_tip,
            "Recalc RSSI-value to mV/m or uV, dBm across 50 Ohm Click me to change.");
  EXPECT_EQ(form.lblRSSI.tool_tip, "Latest RSSI-value reading from set.");
  EXPECT_EQ(form.ProgressBar1.tool_tip, "RSSI = 0> 255 Click me to change!");
  EXPECT_EQ(form.lblSquelch.back_color, Color::kRed);
  EXPECT_EQ(form.ProgressBar1.maximum, 255);
  EXPECT_EQ(form.sldSquelch.minimum, 0);
  EXPECT_EQ(form.sldSquelch.maximum, 255);
  EXPECT_EQ(form.sldSquelch.value, 42);
}

TEST_F(SMeterTest, SquelchLevelBeyondTheSliderIsNotShown) {
  for (const int level : {-1, 256}) {
    form.sldSquelch.value = 17;
    settings.SquelchLevel = static_cast<std::int16_t>(level);
    bench.meter.ShowAtStart();
    EXPECT_EQ(form.sldSquelch.value, 17) << level;
    EXPECT_EQ(settings.SquelchLevel, level);
  }
}

TEST_F(SMeterTest, EditorFollowsOnlyWhileLoaded) {
  int followed = 0;
  bench.meter.follow_reading = [&] { ++followed; };
  bench.forms.form3.loaded = false;
  bench.meter.ShowRSSIStype();
  EXPECT_EQ(followed, 0);
  bench.forms.form3.loaded = true;
  bench.meter.ShowRSSIStype();
  EXPECT_EQ(followed, 1);
}

TEST_F(SMeterTest, SquelchLevelAtTheEndsOfTheSliderIsShown) {
  for (const int level : {0, 255}) {
    form.sldSquelch.value = 17;
    settings.SquelchLevel = static_cast<std::int16_t>(level);
    bench.meter.ShowAtStart();
    EXPECT_EQ(form.sldSquelch.value, level);
  }
}

TEST_F(SMeterTest, SquelchOfTheScaleEndsTakesWhatReachesIt) {
  settings.SquelchLevel = 0;
  bench.meter.AverageRSSIValue(0, false);
  EXPECT_EQ(form.lblSquelch.back_color, Color::kGreen) << "0 reaches 0";
  bench.meter.AverageRSSIValue(0, true);
  settings.SquelchLevel = 255;
  bench.meter.AverageRSSIValue(254, false);
  EXPECT_EQ(form.lblSquelch.back_color, Color::kRed);
  bench.meter.AverageRSSIValue(255, false);
  EXPECT_EQ(form.lblSquelch.back_color, Color::kGreen);
  EXPECT_EQ(bench.meter.AveragedRssi(), 255);
}

TEST_F(SMeterTest, StartSetsTheEndsOfSliderAndBars) {
  form.sldSquelch.minimum = 5;
  form.sldSquelch.maximum = 100;
  form.ProgressBar1.maximum = minimal.ProgressBar1.maximum = 100;
  bench.meter.ShowAtStart();
  EXPECT_EQ(form.sldSquelch.minimum, 0);
  EXPECT_EQ(form.sldSquelch.maximum, 255);
  EXPECT_EQ(form.ProgressBar1.maximum, 255);
  EXPECT_EQ(minimal.ProgressBar1.maximum, 255);
}

}  // namespace
}  // namespace kestrum
