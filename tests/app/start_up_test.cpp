#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/app_title.h"
#include "support/scripted_car.h"

namespace kestrum::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(StartUp, SecondInstanceIsRefusedBeforeAnythingIsTouched) {
  ScriptedCar car;
  car.world.program.another_instance = true;
  car.Start();
  ASSERT_EQ(car.world.dialogs.messages.size(), 1U);
  EXPECT_EQ(car.world.dialogs.messages[0].title, "Kestrum Auto field strenght logger V1.02");
  EXPECT_EQ(car.world.dialogs.messages[0].text, "I am already running");
  EXPECT_EQ(car.world.dialogs.messages[0].icon, Icon::kInformation);
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_FALSE(car.form1.visible);
  EXPECT_FALSE(car.form1.tmrMain.enabled);
  EXPECT_THAT(car.world.serial.events, IsEmpty());
  EXPECT_THAT(car.world.files.files, IsEmpty());
  EXPECT_THAT(car.world.links.events, IsEmpty());
}

TEST(StartUp, TellsTheFt840ItsModeLockAndFrequency) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  EXPECT_THAT(car.world.serial.events, ElementsAre("port 1", "settings  9600,N,8,2", "open"));
  EXPECT_THAT(car.world.serial.written, ElementsAre(Bytes({0, 0, 0, 0, 0x0C}),                // LSB
                                                    Bytes({0, 0, 0, 0, 0x04}),                // lock off
                                                    Bytes({0x00, 0x30, 0x36, 0x00, 0x0A})));  // 3630 kHz
  EXPECT_EQ(car.form1.lblFreq.caption, " 3630 kHz");
  EXPECT_EQ(car.form1.txtFrequency.text, "3630 kHz");
  EXPECT_TRUE(car.form1.optLsb.checked);
  EXPECT_TRUE(car.form1.mnuFT840.checked);
  EXPECT_TRUE(car.form1.mnuCom1.checked);
  EXPECT_EQ(car.form1.mnuBaud.caption, "Baud(9600)");
  EXPECT_EQ(car.form1.StatusBar1[2].text, "Com1=9k6 FT840 ");
  EXPECT_EQ(car.world.beeper.beeps, 0);
}

TEST(StartUp, SwitchesOnAnFt817ThatWasOn) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT817;
  settings.DialLock = true;
  car.WriteConfig(settings, "&On");
  car.Start();
  EXPECT_THAT(car.world.serial.written, ElementsAre(Bytes({0, 0, 0, 0, 7}),     // LSB
                                                    Bytes({0, 0, 0, 0, 0}),     // wake-up
                                                    Bytes({0, 0, 0, 0, 0x0F}),  // power on
                                                    Bytes({0, 0, 0, 0, 7}),     // the mode once more
                                                    Bytes({0, 0, 0, 0, 0}),     // lock on
                                                    Bytes({0x00, 0x36, 0x30, 0x00, 0x01})));
  EXPECT_THAT(car.world.clock.sleeps_ms, ElementsAre(50, 50, 50));
  EXPECT_EQ(car.form1.cmdFT817OnOff.caption, "&On");
  EXPECT_TRUE(car.form1.cmdFT817OnOff.enabled);
  EXPECT_TRUE(car.form1.chkLock.checked);
  // Power on tunes to the frequency label, which still shows its placeholder then: out of range, a beep.
  EXPECT_EQ(car.world.beeper.beeps, 1);
}

TEST(StartUp, NeitherSwitchesOnNorTunesAnFt817ThatWasOff) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT817;
  car.WriteConfig(settings, "&Off");
  car.Start();
  EXPECT_THAT(car.world.serial.written, ElementsAre(Bytes({0, 0, 0, 0, 7}), Bytes({0, 0, 0, 0, 0x80})));
  EXPECT_EQ(car.form1.lblFreq.caption, "3630");
  EXPECT_EQ(car.form1.txtFrequency.text, "3630 kHz");
  EXPECT_EQ(car.form1.cmdFT817OnOff.caption, "&Off");
}

TEST(StartUp, AnFt817OnAClosedPortIsOff) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT817;
  car.WriteConfig(settings, "&On");
  car.world.serial.can_open = false;
  car.Start();
  EXPECT_EQ(car.form1.cmdFT817OnOff.caption, "&Off");
  EXPECT_TRUE(car.form1.tmrMain.enabled);
  EXPECT_TRUE(car.form1.visible);
}

TEST(StartUp, AFrequencyTextWithItsUnitIsNotGivenASecondOne) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.FrequencyText = " 7050.5 kHz";
  car.WriteConfig(settings);
  car.Start();
  EXPECT_EQ(car.form1.txtFrequency.text, " 7050.5 kHz");
  EXPECT_EQ(car.form1.lblFreq.caption, " 7050.5 kHz");
  EXPECT_EQ(car.world.serial.LastWritten(), Bytes({0x50, 0x50, 0x70, 0x00, 0x0A}));
}

TEST(StartUp, DistanceModeTicksEvery1100MsWhateverTheTimeInterval) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.LogByDistance = true;
  settings.TimeIntervalMs = 5000;
  car.WriteConfig(settings);
  car.Start();
  EXPECT_EQ(car.form1.tmrMain.interval_ms, 1100);
  EXPECT_TRUE(car.form1.tmrMain.enabled);
}

TEST(StartUp, TimeModeTicksAtTheTimeInterval) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.TimeIntervalMs = 2500;
  car.WriteConfig(settings);
  car.Start();
  EXPECT_EQ(car.form1.tmrMain.interval_ms, 2500);
}

TEST(StartUp, ShowsTheStartStampAndThatNothingIsLogged) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.world.clock.now = {2026, 5, 17, 14, 3, 9};
  car.Start();
  EXPECT_EQ(car.form1.lblLog.caption, "Start @05-17-26 14:03:09");
  EXPECT_EQ(car.app.log.LogBuffer[0], "Start @05-17-26 14:03:09");
  EXPECT_EQ(car.form1.lblLoggingInto.text, "Not logging now !");
  EXPECT_TRUE(car.app.log.NotLogging);
  EXPECT_EQ(car.form1.cmdLoggin.caption, "Start&Log(F3)");
  EXPECT_EQ(car.form1.lblLoggingInto.tool_tip, "Program puts the logged data here ! .");
  EXPECT_EQ(car.form1.lblLog.tool_tip, "The data for the logfile.");
}

TEST(StartUp, LinksTheSixLabelsInTheirOrder) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  EXPECT_THAT(car.world.links.events,
              ElementsAre("link Posdex|form1 lblLat1", "link Posdex|form1 lblLong1",
                          "link Posdex|form1 lblVal1", "link Posdex|form1 lblCompas1",
                          "link Posdex|form1 lblHeight1", "link Posdex|form1 lblSpeed1"));
  EXPECT_EQ(car.form1.lblDDECompas.link_topic, "Posdex|form1");
  EXPECT_EQ(car.form1.lblDDECompas.link_item, "lblCompas1");
}

TEST(StartUp, WithoutAConfigurationTakesDefaultsAndOpensTheInfoTextOnce) {
  ScriptedCar car;
  car.world.files.files["/car/Kestrum.txt"] = "Welcome";
  car.Start();
  EXPECT_THAT(car.world.dialogs.messages, IsEmpty());
  EXPECT_EQ(car.settings.RigModel, kFT817);
  EXPECT_EQ(car.form1.tmrMain.interval_ms, 5000);
  EXPECT_EQ(car.app.state.InfoRequest, 1);
  car.form1.activate();
  EXPECT_TRUE(car.app.forms.form2.visible);
  EXPECT_EQ(car.app.forms.form2.Text1.text, "     Welcome\r\n");
  car.app.forms.form2.close();
  EXPECT_FALSE(car.app.forms.form2.visible);
  car.form1.activate();
  EXPECT_FALSE(car.app.forms.form2.visible);
}

TEST(StartUp, GoesOnWithDefaultsAfterARejectedConfiguration) {
  ScriptedCar car;
  car.world.files.files["/car/Kestrum.cfg"] = "something else\r\n";
  car.Start();
  ASSERT_EQ(car.world.dialogs.messages.size(), 1U);
  EXPECT_EQ(car.world.dialogs.messages[0].text,
            "LoadCfg\r\nInvalide version of /car/Kestrum.cfg\r\n\r\nI load default values now!");
  EXPECT_TRUE(car.form1.tmrMain.enabled);
  EXPECT_EQ(car.app.state.InfoRequest, 0);
}

TEST(StartUp, FillsTheAntennaListUpToTheFirstGap) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.TxAntennas[1] = "Dipole, PWR 100W";
  car.WriteConfig(settings);
  car.Start();
  EXPECT_THAT(car.form1.cmbTxAntenna.items, ElementsAre("Antenna1, PWR 10W", "Dipole, PWR 100W"));
  EXPECT_EQ(car.form1.cmbTxAntenna.text, "Dipole, PWR 100W");
}

TEST(StartUp, SetsTheFixedCalibrationPathsAndTheDefaultTable) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  EXPECT_EQ(car.settings.CalibrationFiles[0], "/car/Calibration1.cfg");
  EXPECT_EQ(car.settings.CalibrationFiles[1], "/car/Calibration2.cfg");
  EXPECT_EQ(car.app.table.S2Ftable[128].s, "S9");
  EXPECT_EQ(car.form1.lblStatusCaption.caption, "Cat FT840 Com1  Default Calibration Table");
  EXPECT_EQ(car.form1.ProgressBar1.maximum, 255);
}

TEST(StartUp, ScalesTheDefaultTableAboveThirtyMegahertz) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT857;
  settings.FrequencyText = "145000";
  car.WriteConfig(settings);
  car.Start();
  EXPECT_TRUE(car.app.state.AboveHF);
  EXPECT_EQ(car.app.table.S2Ftable[128].microvolt, "5");
}

TEST(StartUp, ShowsAReadingOfZeroAndThePlacedWindow) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.MainLeft = 600;
  settings.MainTop = 450.5F;
  settings.SquelchLevel = 70;
  settings.ProgressBarMode = false;
  settings.ShowDDE = false;
  car.WriteConfig(settings);
  car.Start();
  EXPECT_EQ(car.form1.left, 600);
  EXPECT_EQ(car.form1.top, 450.5F);
  EXPECT_EQ(car.form1.lblRSSI.caption, "S0");
  EXPECT_EQ(car.form1.ProgressBar1.tool_tip, "RSSI = 0> 255 Click me to change!");
  EXPECT_EQ(car.form1.lblFieldStrenght.caption, "000.0 uV");
  EXPECT_EQ(car.form1.sldSquelch.value, 70);
  EXPECT_FALSE(car.form1.ProgressBar1.segments);
  EXPECT_FALSE(car.form1.frmDDE.visible);
  EXPECT_FALSE(car.form1.mnuSHowDDE.checked);
  EXPECT_EQ(car.form1.caption, VersionedTitle);
  EXPECT_EQ(car.form1.lblTxLat.caption, "5157.00N");
  EXPECT_EQ(car.form1.lblTxLong.caption, "00532.00E");
  EXPECT_EQ(car.form1.lblTxHeight.caption, "10 m");
}

TEST(StartUp, StartsTheReaderWhenItIsNotThere) {
  ScriptedCar car;
  car.world.windows.titles.clear();
  car.world.program.companions.insert("\\Posdex.exe");
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  ASSERT_EQ(car.world.program.started.size(), 1U);
  EXPECT_EQ(car.world.program.started[0].first, "\\Posdex.exe");
  EXPECT_EQ(car.world.program.started[0].second, ShowStyle::kNormalWithoutFocus);
  EXPECT_THAT(car.world.dialogs.messages, IsEmpty());
}

TEST(StartUp, OpensTheWindowWithoutRigReaderOrFiles) {
  ScriptedCar car;
  car.world.windows.titles.clear();
  car.world.serial.can_open = false;
  car.Start();
  ASSERT_EQ(car.world.dialogs.messages.size(), 1U);
  EXPECT_EQ(car.world.dialogs.messages[0].text, "Posdex.exe Not found");
  EXPECT_TRUE(car.form1.visible);
  car.RunFor(std::chrono::seconds(60));
  EXPECT_GT(car.app.log.LogCount, 9);
}

TEST(StartUp, StartLoggingActsAsF3OnceStarted) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start({.start_logging = true});
  EXPECT_EQ(car.form1.cmdLoggin.caption, "&Logging(F3)");
  EXPECT_EQ(car.form1.lblLoggingInto.text, "Data to /car/RSSI-GPS.log");
}

TEST(StartUp, MinimalActsAsF5OnceStarted) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start({.minimal = true});
  EXPECT_TRUE(car.app.forms.form5.visible);
  EXPECT_FALSE(car.form1.visible);
  EXPECT_EQ(car.form1.cmdLoggin.caption, "&Logging(F3)");
}

TEST(StartUp, EndsQuietlyWhenTheEndComesUnderItsFirstMessage) {
  ScriptedCar car;
  car.world.files.files["/car/Kestrum.cfg"] = "something else\r\n";
  car.world.dialogs.while_open = [&car] { car.app.ExitWithoutAsking(); };
  car.Start({.start_logging = true});
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_FALSE(car.form1.visible);
  EXPECT_FALSE(car.form1.tmrMain.enabled);
  EXPECT_EQ(car.world.files.files["/car/Kestrum.cfg"], "something else\r\n");
  // Neither the reader nor the rig is set up any more.
  EXPECT_TRUE(car.world.program.started.empty());
  EXPECT_TRUE(car.world.serial.events.empty());
}

TEST(StartUp, ASecondInstanceThatIsEndedUnderItsMessageLeavesTheReaderToTheFirst) {
  ScriptedCar car;
  car.world.program.another_instance = true;
  car.world.dialogs.while_open = [&car] { car.app.ExitWithoutAsking(); };
  car.Start();
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_TRUE(car.world.windows.closed.empty());
}

TEST(StartUp, LeavesTheRigAloneWhenTheEndComesUnderTheMessageOfTheMissingReader) {
  ScriptedCar car;
  car.world.windows.titles.clear();
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.world.dialogs.while_open = [&car] { car.app.ExitWithoutAsking(); };
  car.Start();
  ASSERT_EQ(car.world.dialogs.messages.size(), 1U);
  EXPECT_EQ(car.world.dialogs.messages[0].text, "Posdex.exe Not found");
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_TRUE(car.world.serial.events.empty());
}

}  // namespace
}  // namespace kestrum::test
