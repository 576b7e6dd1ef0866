#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scripted_car.h"

// Single steps of start-up, and what is not yet or no longer done by them.
namespace kestrum::test {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

TEST(StartUpSteps, OnlyAnFt817IsSwitchedOn) {
  for (const std::int32_t rig : {kFT840, kFT847, kFT857, kFT897}) {
    ScriptedCar car;
    Settings settings = ScriptedCar::UsualSettings();
    settings.RigModel = rig;
    car.WriteConfig(settings, "&On");
    car.Start();
    EXPECT_EQ(car.form1.cmdFT817OnOff.caption, "&On") << rig;
    EXPECT_THAT(car.world.serial.written, Not(Contains(Bytes({0, 0, 0, 0, 0x0F})))) << rig;
    EXPECT_THAT(car.world.clock.sleeps_ms, IsEmpty()) << rig;
  }
}

TEST(StartUpSteps, TheAveragingMenuShowsItsSetting) {
  for (const bool average : {true, false}) {
    ScriptedCar car;
    Settings settings = ScriptedCar::UsualSettings();
    settings.TimeIntervalMs = 2000;
    settings.AverageRSSI = average;
    car.WriteConfig(settings);
    car.Start();
    EXPECT_EQ(car.form1.mnuAverageRSSI.checked, average);
    EXPECT_EQ(car.form1.tmrAverageRSSI.enabled, average);
    EXPECT_EQ(car.form1.StatusBar1[0].text, "Get RSSI every 2000 mSec");
    EXPECT_EQ(car.form1.StatusBar1[1].text, average ? "Averaged" : "Not Averaged");
  }
}

// The averaging check mark goes again when the interval is too short for averaging.
TEST(StartUpSteps, AveragingTooFastIsRefusedWithTheWindowOpen) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.AverageRSSI = true;
  car.WriteConfig(settings);
  car.Start();
  EXPECT_FALSE(car.form1.mnuAverageRSSI.checked);
  ASSERT_EQ(car.world.dialogs.messages.size(), 1U);
  EXPECT_EQ(car.world.dialogs.messages[0].text, "Timer must be >=1100 mSec to average RSSI");
  EXPECT_TRUE(car.form1.visible);
}

TEST(StartUpSteps, NoCycleRunsBeforeTheLastStep) {
  ScriptedCar car;
  car.world.windows.titles.clear();  // the reader is missing: a box opens
  car.WriteConfig(ScriptedCar::UsualSettings());
  int boxes = 0;
  car.world.dialogs.while_open = [&] {
    ++boxes;
    car.form1.tmrMain.tick();
    EXPECT_EQ(car.form1.lblPrompt.caption, "");
    EXPECT_FALSE(car.form1.tmrMain.enabled);
  };
  car.Start();
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(car.app.log.LogCount, 0);
  EXPECT_TRUE(car.form1.tmrMain.enabled);
  car.form1.tmrMain.tick();
  EXPECT_EQ(car.app.log.LogCount, 1);
}

TEST(StartUpSteps, WhatIsNotKnownYetShowsQuestionMarks) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  EXPECT_EQ(car.form1.lblRxLat.caption, "????.???");
  EXPECT_EQ(car.form1.lblRxLong.caption, "?????.???");
  EXPECT_EQ(car.form1.lblRxDist.caption, "??? km");
  EXPECT_EQ(car.form1.lblRxBearing.caption, "???\xB0");
  EXPECT_EQ(car.form1.lblRxHeight.caption, "??? m");
  EXPECT_EQ(car.form1.lblRxVal.caption, "No GPS");
  EXPECT_EQ(car.form1.lblOpticalDistance.caption, "??.? km");
  EXPECT_EQ(car.form1.lblPelorus.caption, "???\xB0");
  EXPECT_EQ(car.form1.lblTextBearing.caption, "?");
  EXPECT_EQ(car.form1.Picture1.needle, std::nullopt);
}

TEST(StartUpSteps, ToolTipsOfTheMainWindow) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  const Form1& form = car.form1;
  const std::vector<std::pair<const Control*, const char*>> tips = {
      {&form.lblLoggingInto, "Program puts the logged data here ! ."},
      {&form.lblTxLat, "Latitude from TX"},
      {&form.lblTxLong, "Longitude from TX"},
      {&form.lblTxHeight, "TX height in metres."},
      {&form.cmbTxAntenna, "Tx antenna description and RF power."},
      {&form.cmdGetTxFix, "Push me to set the TX site Latitude and longitude from GPS."},
      {&form.lblRxLat, "Latitude from RX."},
      {&form.lblRxLong, "Longitude from RX."},
      {&form.lblRxDist, "Distance to TX site in km."},
      {&form.lblRxBearing,
       "Bearing in \xB0"
       " to TX site from RX site relative to North."},
      {&form.lblRxHeight, "RX altitude in metres."},
      {&form.lblRxVal, "GPS RX Ok."},
      {&form.lblPelorus, "Relative heading to TX site. Front of the car is 0\xB0"},
      {&form.lblOpticalDistance, "Maximal Optical distance."},
      {&form.lblFieldStrenght, "Recalc RSSI-value to mV/m or uV, dBm across 50 Ohm Click me to change."},
      {&form.lblRSSI, "Latest RSSI-value reading from set."},
      {&form.lblFreq, "Frequency where the set is recieving."},
      {&form.lblCatCmd, "Cmd's  send or recieved to the tranceiver"},
      {&form.lblCatCount, "Measurements in buffer now."},
      {&form.chkBeep, "If checked then I beep every Timer fetch."},
      {&form.chkLock, "Lock dial knob of Cat controlled rig."},
      {&form.cmdUp, "Frequency up 9 kHz"},
      {&form.cmdDown, "Frequency down 9 kHz"},
      {&form.cmdFT817OnOff, "Switch FT817 On/Off."},
      {&form.txtFrequency, "Type the frequency you want to set the tranceiver on. "},
      {&form.lblLog, "The data for the logfile."},
      {&form.sldSquelch, "Squelch adjust only if averaged"},
      {&form.lblPrompt, "Gives indication of data fetch speed Menu > Timing (1000 mSec)"},
  };
  for (const auto& [control, text] : tips) EXPECT_EQ(control->tool_tip, text);
}

TEST(StartUpSteps, MenuItemsThatANewcomerMayNotKnowSayWhatTheyDo) {
  ScriptedCar car;
  car.Start();
  const Form1& form = car.form1;
  const std::vector<std::pair<const MenuItem*, const char*>> tips = {
      {&form.mnuSavecfg, "Saves the settings now; the end of the program does so too."},
      {&form.mnuDefaultCfg, "Puts the factory settings in place and ends the program."},
      {&form.mnuSaveLogfile, "Names the log file and writes what is in the buffer into it."},
      {&form.mnuSHowDDE, "The raw fields of the GPS reader: shown or hidden."},
      {&form.mnuDefaultCalibration, "The built-in table: S9 is 50 uV, above 30 MHz 5 uV."},
      {&form.mnuLoadConfig1, "Takes the table from Calibration1.cfg."},
      {&form.mnuLoadConfig2, "Takes the table from Calibration2.cfg."},
      {&form.mnuLoad, "Takes the table from a file that you name."},
      {&form.mnuOrvandi, "Starts the mapping program, which shows logs."},
      {&form.mnuTiming, "How often, or after what distance, a record is made."},
      {&form.mnuAverageRSSI, "A record takes the mean of fast readings instead of a single one."},
      {&form.mnuTxLatLong, "Where the transmitter stands: typed."},
      {&form.mnuTxLatLongGps, "Where the transmitter stands: where the car is now."},
      {&form.mnuBaud, "Speed of the port: each press takes the next one. Choose the same in the set."},
      {&form.mnuMinimalDisplay, "Large figures for driving; starts logging."},
      {&form.mnuPower, "dBm and watts, and what receivers can hear."},
  };
  for (const auto& [item, text] : tips) EXPECT_EQ(item->tool_tip, text);
}

TEST(StartUpSteps, TheCalibrationEditorIsLoadedHidden) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  EXPECT_TRUE(car.app.forms.form3.loaded);
  EXPECT_FALSE(car.app.forms.form3.visible);
}

// The message of the rejected configuration is the first place where the end can come.
TEST(StartUpSteps, AnEndUnderTheFirstMessageNeitherStartsNorLinksTheReader) {
  ScriptedCar car;
  car.world.windows.titles.clear();
  car.world.program.companions.insert("\\Posdex.exe");
  car.world.files.files["/car/Kestrum.cfg"] = "something else\r\n";
  car.world.dialogs.while_open = [&car] { car.app.ExitWithoutAsking(); };
  car.Start();
  EXPECT_THAT(car.world.program.started, IsEmpty());
  EXPECT_THAT(car.world.links.events, IsEmpty());
  EXPECT_THAT(car.world.windows.looked_up, IsEmpty());
  EXPECT_FALSE(car.app.forms.form3.loaded);
}

// The other is the message of a missing reader: no table, no rig.
TEST(StartUpSteps, AnEndUnderTheMessageOfTheReaderLoadsNoTable) {
  ScriptedCar car;
  car.world.windows.titles.clear();
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.world.dialogs.while_open = [&car] { car.app.ExitWithoutAsking(); };
  car.Start();
  EXPECT_EQ(car.app.table.S2Ftable[128].s, "");
  EXPECT_EQ(car.form1.lblLog.caption, "");
}

}  // namespace
}  // namespace kestrum::test
