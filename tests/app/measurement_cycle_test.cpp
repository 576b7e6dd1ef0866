#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scripted_car.h"

namespace kestrum::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kReadMeter = Bytes({0, 0, 0, 0, 0xF7});

struct RunningCar : ScriptedCar {
  explicit RunningCar(const Settings& wanted = UsualSettings()) {
    WriteConfig(wanted);
    Start();
    world.serial.written.clear();
  }
  void Tick() { form1.tmrMain.tick(); }
};

Settings DistanceSettings() {
  Settings settings = ScriptedCar::UsualSettings();
  settings.LogByDistance = true;
  settings.DistanceIntervalKm = 1;
  return settings;
}

TEST(CycleIndicator, ShowsTheFourCharactersInTurn) {
  RunningCar car;
  std::vector<std::string> shown;
  for (int tick = 0; tick < 5; ++tick) {
    car.Tick();
    shown.push_back(car.form1.lblPrompt.caption);
  }
  EXPECT_THAT(shown, ElementsAre(" /", " -", " \\", " -", " /"));
}

TEST(CycleIndicator, BeepsOnlyWhenAskedFor) {
  RunningCar car;
  car.Tick();
  EXPECT_EQ(car.world.beeper.beeps, 0);
  car.form1.chkBeep.checked = true;
  car.Tick();
  EXPECT_EQ(car.world.beeper.beeps, 1);
  EXPECT_EQ(car.form1.lblPrompt.caption, " -");
}

TEST(CycleIndicator, TurnsInTheButtonOfTheMinimalDisplay) {
  RunningCar car;
  car.Tick();
  EXPECT_EQ(car.app.forms.form5.Command1.caption, "&Main(F5) ");
  car.form1.mnuMinimalDisplay.click();
  car.Tick();
  EXPECT_EQ(car.app.forms.form5.Command1.caption, "&Main(F5) (-)");
}

TEST(MeasurementCycle, ReadsShowsAndRecordsOnEveryTickOfTimeMode) {
  RunningCar car;
  car.s_meter = 128;
  car.SendGps("5158.00N", "00532.00E");
  car.Tick();
  EXPECT_THAT(car.world.serial.written, ElementsAre(kReadMeter));
  EXPECT_EQ(car.world.clock.sleeps_ms, std::vector<int>{50});
  EXPECT_EQ(car.form1.lblRSSI.caption, "S9");
  EXPECT_EQ(car.form1.lblFieldStrenght.caption, "050.0 uV");
  EXPECT_EQ(car.form1.ProgressBar1.value, 128);
  EXPECT_EQ(car.form1.lblRxVal.caption, "GPS Ok");
  EXPECT_EQ(car.form1.lblRxDist.caption, "1.86 km");
  EXPECT_EQ(car.form1.lblRxBearing.caption, "180\xB0");
  EXPECT_EQ(car.form1.lblPelorus.caption, "225\xB0");
  EXPECT_EQ(car.app.log.LogCount, 1);
  EXPECT_EQ(car.form1.lblLog.caption,
            "14:03:09, GPS Ok, 5158.00N, 00532.00E, 1.86 km, 8.2 m, 180\xB0, 128, S9, 50 uV, 20.7 mV/m");
  EXPECT_TRUE(car.form1.tmrMain.enabled);
}

TEST(MeasurementCycle, TheTimerStandsStillDuringTheCycle) {
  RunningCar car;
  bool enabled_inside = true;
  car.world.pump.on_pump = [&] { enabled_inside = car.form1.tmrMain.enabled; };
  car.Tick();
  EXPECT_FALSE(enabled_inside);
  EXPECT_TRUE(car.form1.tmrMain.enabled);
}

TEST(MeasurementCycle, ATickInsideACycleIsIgnored) {
  RunningCar car;
  car.world.pump.on_pump = [&car] { car.form1.tmrMain.tick(); };
  car.Tick();
  EXPECT_EQ(car.app.log.LogCount, 1);
  EXPECT_EQ(car.world.serial.written.size(), 1U);
}

TEST(MeasurementCycle, AFailedReadCountsAsZeroAndTheCycleGoesOn) {
  RunningCar car;
  car.rig_answers = false;
  car.app.state.RssiRaw = 77;
  car.Tick();
  EXPECT_EQ(car.app.state.RssiRaw, 0);
  EXPECT_EQ(car.form1.lblCatComment.caption, "Nothing rx-ed!");
  EXPECT_EQ(car.app.log.LogCount, 1);
}

TEST(MeasurementCycle, MeasuresWithoutAFixAndWarnsTheDriver) {
  RunningCar car;
  car.SendGps("5158.00N", "00532.00E");
  car.Tick();
  EXPECT_EQ(car.form1.lblRxVal.back_color, Color::kSystem);
  car.world.links.Send("lblVal1", "V");
  car.world.clock.Advance(seconds(12));
  car.Tick();
  EXPECT_EQ(car.app.log.LogCount, 2);
  EXPECT_EQ(car.form1.lblRxVal.back_color, Color::kWarning);
  EXPECT_THAT(car.form1.lblRxVal.tool_tip, ::testing::HasSubstr("12 s"));
  EXPECT_EQ(car.form1.lblRxDist.caption, "1.86 km");
}

TEST(MeasurementCycle, UsesTheAveragedValueWithoutTouchingTheRig) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.TimeIntervalMs = 1100;
  settings.AverageRSSI = true;
  RunningCar car(settings);
  car.s_meter = 98;
  car.app.s_meter.AverageRSSIValue(50, false);
  car.app.s_meter.AverageRSSIValue(128, false);
  car.Tick();
  EXPECT_THAT(car.world.serial.written, IsEmpty());
  EXPECT_EQ(car.app.state.RssiRaw, 128);
  EXPECT_THAT(car.form1.lblLog.caption, ::testing::HasSubstr(", 128, S9, 50 uV, 20.7 mV/m"));
  EXPECT_EQ(car.app.s_meter.AveragedRssi(), 0);
}

TEST(MeasurementCycle, AveragesWhatItsOwnTimerCollects) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.TimeIntervalMs = 2000;
  settings.AverageRSSI = true;
  RunningCar car(settings);
  car.s_meter = 72;
  car.RunFor(milliseconds(2000));
  EXPECT_GE(car.world.serial.written.size(), 4U);
  EXPECT_EQ(car.app.log.LogCount, 1);
  EXPECT_THAT(car.form1.lblLog.caption, ::testing::HasSubstr(", 72, S7, 12.5 uV, 5.19 mV/m"));
}

TEST(MeasurementCycle, TheMenuTogglesAveragingAtTheNextTick) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.TimeIntervalMs = 1100;
  RunningCar car(settings);
  car.form1.mnuAverageRSSI.click();
  EXPECT_FALSE(car.settings.AverageRSSI);
  EXPECT_FALSE(car.form1.mnuAverageRSSI.checked);
  car.Tick();
  EXPECT_TRUE(car.settings.AverageRSSI);
  EXPECT_TRUE(car.form1.mnuAverageRSSI.checked);
  EXPECT_TRUE(car.form1.tmrAverageRSSI.enabled);
  EXPECT_EQ(car.form1.StatusBar1[1].text, "Averaged");
  EXPECT_FALSE(car.app.state.AverageRequest);
  car.Tick();
  EXPECT_TRUE(car.settings.AverageRSSI);
  car.form1.mnuAverageRSSI.click();
  car.Tick();
  EXPECT_FALSE(car.settings.AverageRSSI);
  EXPECT_EQ(car.form1.StatusBar1[1].text, "Not Averaged");
}

TEST(MeasurementCycle, AveragingIsRefusedBelow1100Ms) {
  RunningCar car;
  car.form1.mnuAverageRSSI.click();
  car.Tick();
  EXPECT_FALSE(car.settings.AverageRSSI);
  EXPECT_FALSE(car.form1.mnuAverageRSSI.checked);
  ASSERT_EQ(car.world.dialogs.messages.size(), 1U);
  EXPECT_EQ(car.world.dialogs.messages[0].text, "Timer must be >=1100 mSec to average RSSI");
  EXPECT_EQ(car.world.dialogs.messages[0].icon, Icon::kExclamation);
}

TEST(MeasurementCycle, EndsInsideTheCycleWithoutARecord) {
  RunningCar car;
  car.form1.cmdLoggin.click();
  car.world.pump.on_pump = [&car] { car.app.ExitApp(); };
  car.Tick();
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_EQ(car.app.log.LogCount, 0);
  EXPECT_FALSE(car.form1.tmrMain.enabled);
}

TEST(MeasurementCycle, StaysStoppedWhenTheSetIsSwitchedOffInsideTheCycle) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT817;
  car.WriteConfig(settings, "&On");
  car.Start();
  car.world.pump.on_pump = [&car] {
    if (PowerIsOn(car.form1)) car.form1.cmdFT817OnOff.click();
  };
  car.form1.tmrMain.tick();
  EXPECT_FALSE(car.form1.tmrMain.enabled);
  car.form1.cmdFT817OnOff.click();
  EXPECT_TRUE(car.form1.tmrMain.enabled);
}

TEST(DistanceMode, TheFirstTickWaitsForAFixAndRecordsOnce) {
  RunningCar car(DistanceSettings());
  car.form1.chkBeep.checked = true;
  int turns = 0;
  car.world.pump.on_pump = [&] {
    if (++turns == 30) car.SendGps("5200.00N", "00532.00E");
  };
  car.Tick();
  EXPECT_EQ(turns, 31);
  EXPECT_EQ(car.world.pump.waits_ms, std::vector<int>(30, 100));
  EXPECT_EQ(car.world.beeper.beeps, 32);
  EXPECT_EQ(car.app.log.LogCount, 1);
  EXPECT_TRUE(car.app.cycle.ReferenceValid());
  EXPECT_THAT(car.world.serial.written, ElementsAre(kReadMeter));
}

TEST(DistanceMode, TheWaitEndsWithTheProgram) {
  RunningCar car(DistanceSettings());
  int turns = 0;
  car.world.pump.on_pump = [&] {
    if (++turns == 5) car.app.ExitApp();
  };
  car.Tick();
  EXPECT_EQ(turns, 5);
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_THAT(car.world.serial.written, IsEmpty());
  EXPECT_FALSE(car.form1.tmrMain.enabled);
}

TEST(DistanceMode, NeitherReadsNorLogsBeforeTheInterval) {
  RunningCar car(DistanceSettings());
  car.SendGps("5200.00N", "00532.00E");
  car.Tick();
  car.world.serial.written.clear();
  car.SendGps("5200.50N", "00532.00E");  // 0.93 km
  car.Tick();
  EXPECT_THAT(car.world.serial.written, IsEmpty());
  EXPECT_EQ(car.app.log.LogCount, 1);
  EXPECT_EQ(car.form1.lblRxLat.caption, "5200.50N");
  car.SendGps("5200.60N", "00532.00E");  // 1.11 km
  car.Tick();
  EXPECT_EQ(car.world.serial.written.size(), 1U);
  EXPECT_EQ(car.app.log.LogCount, 2);
}

TEST(DistanceMode, SkipsTicksWithoutAFix) {
  RunningCar car(DistanceSettings());
  car.SendGps("5200.00N", "00532.00E");
  car.Tick();
  car.world.serial.written.clear();
  car.SendGps("5205.00N", "00532.00E", "V");
  car.Tick();
  EXPECT_THAT(car.world.serial.written, IsEmpty());
  EXPECT_EQ(car.app.log.LogCount, 1);
  EXPECT_EQ(car.form1.lblRxLat.caption, "5200.00N");
  EXPECT_EQ(car.form1.lblRxVal.back_color, Color::kWarning);
}

// From the second triggered record on, the distance to the transmitter is what counts: every tick away from
// the transmitter records, none beside it does.
TEST(DistanceMode, TheReferenceBecomesTheTransmitter) {
  RunningCar car(DistanceSettings());
  car.SendGps("5200.00N", "00532.00E");
  car.Tick();
  car.SendGps("5201.00N", "00532.00E");
  car.Tick();
  ASSERT_EQ(car.app.log.LogCount, 2);
  car.SendGps("5201.01N", "00532.00E");  // 19 m further, 7.4 km from the transmitter
  car.Tick();
  EXPECT_EQ(car.app.log.LogCount, 3);
  car.SendGps("5157.50N", "00532.00E");  // 0.93 km from the transmitter
  car.Tick();
  EXPECT_EQ(car.app.log.LogCount, 3);
  EXPECT_NEAR(car.app.circle.reference.latitude_deg, 51.95, 1e-6);
}

TEST(DistanceMode, ChoosingItAnewTakesANewReference) {
  RunningCar car(DistanceSettings());
  car.SendGps("5200.00N", "00532.00E");
  car.Tick();
  EXPECT_TRUE(car.app.cycle.ReferenceValid());
  car.app.forms.form4.Option1.click();
  car.app.forms.form4.Option2.click();
  EXPECT_FALSE(car.app.cycle.ReferenceValid());
}

TEST(DistanceMode, UsesTheAverageToo) {
  Settings settings = DistanceSettings();
  settings.AverageRSSI = true;
  RunningCar car(settings);
  car.SendGps("5200.00N", "00532.00E");
  car.app.s_meter.AverageRSSIValue(32, false);
  car.Tick();
  EXPECT_THAT(car.world.serial.written, IsEmpty());
  EXPECT_EQ(car.app.state.RssiRaw, 32);
}

TEST(WholeProgram, TwoHundredAndFiftyRecordsGiveTwoBlocksAndFiftyInMemory) {
  RunningCar car;
  car.form1.cmdLoggin.click();
  car.SendGps("5158.00N", "00532.00E");
  for (int tick = 0; tick < 250; ++tick) car.Tick();
  EXPECT_EQ(car.Log().size(), 2U * 103U);
  EXPECT_EQ(car.app.log.LogCount, 50);
  car.form1.cmdLoggin.click();
  EXPECT_EQ(car.Log().size(), 2U * 103U + 53U);
  EXPECT_EQ(car.form1.lblLoggingInto.text, "Not logging now !");
}

TEST(WholeProgram, AFullDiskIsToldAndTheProgramGoesOn) {
  RunningCar car;
  car.form1.cmdLoggin.click();
  car.world.files.write_fault = "No space left on device";
  for (int tick = 0; tick < 101; ++tick) car.Tick();
  ASSERT_EQ(car.world.dialogs.messages.size(), 1U);
  EXPECT_THAT(car.world.dialogs.messages[0].text, ::testing::StartsWith("Error saving data "));
  EXPECT_THAT(car.world.dialogs.messages[0].text, ::testing::HasSubstr("No space left on device"));
  EXPECT_THAT(car.world.dialogs.messages[0].text, ::testing::HasSubstr("/car/RSSI-GPS.log"));
  EXPECT_EQ(car.app.log.LogCount, 1);
}

TEST(WholeProgram, ABandChangeWritesTheOldBlockUnderItsOwnHeader) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT857;
  settings.FrequencyText = "14200";
  RunningCar car(settings);
  car.form1.cmdLoggin.click();
  for (int tick = 0; tick < 3; ++tick) car.Tick();
  car.form1.txtFrequency.text = "145000";
  car.form1.cmdSetFreq.click();
  ASSERT_EQ(car.Log().size(), 6U);
  EXPECT_THAT(car.Log()[1], ::testing::HasSubstr(",  FT857 LSB  14200 kHz, "));
  EXPECT_TRUE(car.app.state.AboveHF);
  EXPECT_EQ(car.app.table.S2Ftable[128].microvolt, "5");
  EXPECT_EQ(car.form1.txtFrequency.text, "145000");
  EXPECT_EQ(car.form1.lblFreq.caption, " 145000 kHz");
  EXPECT_EQ(car.app.log.LogCount, 0);
}

TEST(WholeProgram, ANewRigWritesTheOldBlockUnderItsOwnHeader) {
  RunningCar car;
  car.form1.cmdLoggin.click();
  car.Tick();
  car.form1.mnuFT857.click();
  ASSERT_EQ(car.Log().size(), 4U);
  EXPECT_THAT(car.Log()[1], ::testing::HasSubstr(",  FT840 LSB "));
  EXPECT_EQ(car.app.log.LogCount, 0);
}

}  // namespace
}  // namespace kestrum::test
