#include <gtest/gtest.h>

#include "support/scripted_car.h"

// What the driver is told, on the manual clock, fault by fault.
namespace kestrum::test {
namespace {

using namespace std::chrono_literals;

class Cockpit : public ::testing::Test {
 protected:
  // A car that logs with a fix and a signal; the lamps have had time to settle.
  void Drive(const Settings& settings = ScriptedCar::UsualSettings(), const std::string& power = "&Off") {
    car.WriteConfig(settings, power);
    car.s_meter = 148;
    car.Start({.start_logging = true});
    car.SendGps("5159.2177N", "00535.3967E", "A", "98.1", "27", "133.2");
    car.RunFor(3100ms);
  }
  const LampText& Log() { return car.form1.lmpLog.says; }
  const LampText& Gps() { return car.form1.lmpGps.says; }
  const LampText& Rig() { return car.form1.lmpRig.says; }

  ScriptedCar car;
  Form5& minimal = car.app.forms.form5;
};

TEST_F(Cockpit, AllIsWell) {
  Drive();
  EXPECT_EQ(Log().words, "Logging");
  EXPECT_EQ(Log().detail, "3 of 100, none written yet");
  EXPECT_EQ(Gps().words, "GPS fix");
  EXPECT_EQ(Gps().detail, "0 s old");
  EXPECT_EQ(Rig().words, "Rig");
  EXPECT_EQ(Rig().detail, "Done, FT840, Com1=9k6");
  EXPECT_FALSE(car.form1.lblRSSI.stale);
  EXPECT_FALSE(car.form1.lblRxDist.stale);
  EXPECT_EQ(car.form1.Picture1.badge, "");
  EXPECT_EQ(car.form1.Picture1.course, 133.2);
  EXPECT_EQ(minimal.lmpLog.says, Log());
  EXPECT_EQ(minimal.lmpGps.says, Gps());
  EXPECT_EQ(minimal.lmpRig.says, Rig());
}

TEST_F(Cockpit, ASilentRigIsToldAndItsNumbersFade) {
  Drive();
  car.rig_answers = false;
  car.RunFor(1000ms);
  EXPECT_EQ(Rig().state, LampState::kGood) << "one missed reading happens";
  EXPECT_FALSE(car.form1.lblRSSI.stale);
  car.RunFor(1000ms);
  EXPECT_EQ(Rig().words, "RIG SILENT");
  for (const Control* control : std::initializer_list<const Control*>{
           &car.form1.lblRSSI, &car.form1.lblFieldStrenght, &car.form1.ProgressBar1, &minimal.Label1[4],
           &minimal.ProgressBar1}) {
    EXPECT_TRUE(control->stale) << control->name;
  }
  EXPECT_FALSE(car.form1.lblRxDist.stale);
  car.RunFor(4500ms);
  EXPECT_EQ(Rig().detail, "silent 6 s");
  car.rig_answers = true;
  car.RunFor(1100ms);
  EXPECT_EQ(Rig().state, LampState::kGood);
  EXPECT_FALSE(car.form1.lblRSSI.stale);
}

TEST_F(Cockpit, SilenceOfAnFt817IsToldAlthoughItCountsAsDone) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT817;
  Drive(settings, "&On");
  EXPECT_EQ(Rig().detail, "Done, FT817, Com1=9k6");
  car.rig_answers = false;
  car.RunFor(2200ms);  // a cycle takes 50 ms of its own
  EXPECT_EQ(car.form1.lblCatComment.caption, "Done");
  EXPECT_EQ(Rig().words, "RIG SILENT");
  EXPECT_TRUE(car.form1.lblRSSI.stale);
}

TEST_F(Cockpit, AnFt817ThatIsSwitchedOffIsTold) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT817;
  Drive(settings, "&On");
  car.form1.cmdFT817OnOff.click();
  car.RunFor(1000ms);
  EXPECT_EQ(Rig().words, "RIG OFF");
  EXPECT_EQ(Rig().detail, "FT817 is not read");
  EXPECT_TRUE(car.form1.lblRSSI.stale);
}

TEST_F(Cockpit, GarbageOfARigIsTold) {
  Drive();
  car.world.serial.answer = [](const std::string&) { return Bytes({1, 2, 3, 4, 5}); };
  car.RunFor(2200ms);
  EXPECT_EQ(Rig().words, "RIG GARBLED");
  EXPECT_TRUE(car.form1.lblRSSI.stale);
}

TEST_F(Cockpit, AnAdapterThatIsUnpluggedFiftyTimesComesBackFiftyTimes) {
  Drive();
  for (int time = 0; time < 50; ++time) {
    car.world.serial.Vanish();
    car.RunFor(1100ms);
    EXPECT_EQ(Rig().words, "UNPLUGGED") << time;
    EXPECT_TRUE(car.form1.lblRSSI.stale) << time;
    car.world.serial.Return();
    const std::size_t sent = car.world.serial.written.size();
    car.RunFor(2100ms);
    EXPECT_EQ(Rig().state, LampState::kGood) << time;
    EXPECT_FALSE(car.form1.lblRSSI.stale) << time;
    EXPECT_EQ(car.form1.ProgressBar1.value, 148) << time;
    for (std::size_t n = sent; n < car.world.serial.written.size(); ++n) {
      EXPECT_EQ(car.world.serial.written.at(n), Bytes({0, 0, 0, 0, 0xF7})) << "only what the cycle sends";
    }
  }
  EXPECT_TRUE(car.world.dialogs.messages.empty());
}

TEST_F(Cockpit, APortThatIsGoneIsNotTriedBeforeItsDeviceIsBack) {
  Drive();
  car.world.serial.Vanish();
  car.world.serial.events.clear();
  car.RunFor(60s);
  EXPECT_TRUE(car.world.serial.events.empty());
}

TEST_F(Cockpit, APressOpensThePortAndSendsNothing) {
  Drive();
  car.world.serial.events.clear();
  const std::size_t sent = car.world.serial.written.size();
  car.form1.lmpRig.click();
  EXPECT_EQ(car.world.serial.events,
            (std::vector<std::string>{"close", "port 1", "settings  9600,N,8,2", "open"}));
  EXPECT_EQ(car.world.serial.written.size(), sent);
}

TEST_F(Cockpit, AnOldFixFadesThePositionAndTellsItsAge) {
  Drive();
  car.world.links.Send("lblVal1", "V");
  car.RunFor(1000ms);
  EXPECT_EQ(Gps().words, "NO GPS FIX");
  EXPECT_FALSE(car.form1.lblRxDist.stale) << "one missed fix happens";
  car.RunFor(1000ms);
  for (const Control* control : std::initializer_list<const Control*>{
           &car.form1.lblRxDist, &car.form1.lblRxBearing, &car.form1.lblTextBearing, &car.form1.lblPelorus,
           &car.form1.lblRxLat, &car.form1.lblRxLong, &car.form1.lblRxHeight, &car.form1.lblOpticalDistance,
           &car.form1.Picture1, &minimal.Label1[0], &minimal.Label1[1], &minimal.Label1[2],
           &minimal.Picture1}) {
    EXPECT_TRUE(control->stale) << control->name;
  }
  EXPECT_FALSE(car.form1.lblRSSI.stale);
  EXPECT_EQ(car.form1.Picture1.course, std::nullopt);
  car.RunFor(13000ms);
  EXPECT_EQ(Gps().detail, "no fix, 14 s old");
  EXPECT_EQ(car.form1.Picture1.badge, "14 s old");
  EXPECT_EQ(minimal.Picture1.badge, "14 s old");
  car.world.links.Send("lblVal1", "A");
  car.RunFor(1000ms);
  EXPECT_FALSE(car.form1.lblRxDist.stale);
  EXPECT_EQ(car.form1.Picture1.badge, "");
}

TEST_F(Cockpit, AReaderThatIsGoneIsStartedAgainByAPress) {
  Drive();
  car.world.links.server_present = false;
  car.world.windows.titles.clear();
  car.RunFor(2200ms);
  EXPECT_EQ(Gps().words, "READER GONE");
  EXPECT_TRUE(car.form1.lblRxDist.stale);
  car.world.program.companions.insert("\\Posdex.exe");
  minimal.lmpGps.click();
  ASSERT_EQ(car.world.program.started.size(), 1U);
  EXPECT_EQ(car.world.program.started.front().first, "\\Posdex.exe");
  EXPECT_TRUE(car.world.dialogs.messages.empty());
  car.world.links.server_present = true;
  car.RunFor(1000ms);
  EXPECT_EQ(Gps().words, "GPS fix");
  minimal.lmpGps.click();
  EXPECT_EQ(car.world.program.started.size(), 1U) << "a reader that is well is left alone";
}

TEST_F(Cockpit, AReaderThatCannotBeStartedIsSaid) {
  Drive();
  car.world.links.server_present = false;
  car.world.windows.titles.clear();
  car.form1.lmpGps.click();
  ASSERT_EQ(car.world.dialogs.messages.size(), 1U);
  EXPECT_EQ(car.world.dialogs.messages.front().text, "Posdex.exe Not found");
}

TEST_F(Cockpit, AFrozenReaderIsNoticedAndClosedByAPress) {
  Drive();
  car.world.links.silence = 5000ms;
  car.RunFor(2200ms);
  EXPECT_EQ(Gps().words, "READER FROZEN");
  EXPECT_TRUE(car.form1.lblRxDist.stale);
  EXPECT_EQ(car.form1.Picture1.badge, "5 s old");
  car.form1.lmpGps.click();
  EXPECT_EQ(car.world.windows.closed, std::vector<std::string>{"Posdex Version 1.19"});
}

TEST_F(Cockpit, LostRecordsAreToldUntilABlockIsWritten) {
  Drive();
  car.world.files.write_fault = "No space left on device";
  car.RunFor(103s);
  EXPECT_EQ(Log().words, "NOT SAVED");
  EXPECT_EQ(Log().state, LampState::kTrouble);
  EXPECT_EQ(Log().detail.substr(0, 16), "100 records lost");
  car.world.files.write_fault.clear();
  car.RunFor(50s);
  EXPECT_EQ(Log().words, "NOT SAVED");
  car.RunFor(55s);
  EXPECT_EQ(Log().words, "Logging");
  EXPECT_EQ(Log().detail.substr(0, 22), "1 of 100, last written");
}

TEST_F(Cockpit, AFolderThatCannotTakeTheLogIsToldWhenLoggingStarts) {
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  car.world.files.write_fault = "No such file or directory";
  car.RunFor(1100ms);
  EXPECT_EQ(Log().words, "Not logging");
  car.form1.cmdLoggin.click();
  EXPECT_EQ(Log().words, "Check disk");
  EXPECT_EQ(Log().detail, "No such file or directory");
  car.world.files.write_fault.clear();
  car.form1.lmpLog.click();
  car.RunFor(1100ms);
  EXPECT_EQ(Log().words, "Logging") << "a press looks again";
}

TEST_F(Cockpit, AJournalThatCannotBeWrittenIsTold) {
  Drive();
  car.world.files.faulty_path = "/car/RSSI-GPS.log.pending";
  car.world.files.write_fault = "Input/output error";
  car.RunFor(2100ms);
  EXPECT_EQ(Log().words, "Check disk");
  EXPECT_EQ(Log().detail, "Input/output error");
}

TEST_F(Cockpit, TheMeterHasAScaleAPeakAndAHistory) {
  Drive();
  EXPECT_EQ(car.form1.ProgressBar1.marks.size(), 16U);
  EXPECT_EQ(minimal.ProgressBar1.marks, car.form1.ProgressBar1.marks);
  EXPECT_EQ(car.form1.chtSignal.line, 128);
  car.s_meter = 40;
  car.RunFor(1000ms);
  EXPECT_EQ(car.form1.ProgressBar1.peak, 148);
  car.RunFor(3000ms);
  EXPECT_EQ(car.form1.ProgressBar1.peak, 40);
  const auto& columns = car.form1.chtSignal.columns;
  ASSERT_EQ(columns.size(), 300U);
  EXPECT_EQ(columns.back(), 40);
  EXPECT_EQ(columns.at(columns.size() - 6), 148);
  car.app.table.ClearCalibration(false);
  car.RunFor(1000ms);
  EXPECT_TRUE(car.form1.ProgressBar1.marks.empty()) << "another table, another scale";
}

TEST_F(Cockpit, ReadingsOfTheAverageCountToo) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.TimeIntervalMs = 2000;
  settings.AverageRSSI = true;
  Drive(settings);
  car.rig_answers = false;
  car.RunFor(700ms);
  EXPECT_EQ(Rig().words, "RIG SILENT");
}

TEST_F(Cockpit, KeysOfTheMinimalDisplay) {
  Drive();
  car.form1.mnuMinimalDisplay.click();
  ASSERT_TRUE(minimal.visible);
  EXPECT_TRUE(minimal.key_down(Key::kF3));
  EXPECT_EQ(Log().words, "Not logging");
  EXPECT_TRUE(minimal.key_down(Key::kF2));
  EXPECT_TRUE(car.app.forms.night);
  EXPECT_TRUE(car.form1.key_down(Key::kF2));
  EXPECT_FALSE(car.app.forms.night);
  EXPECT_FALSE(minimal.key_down(Key::kF1));
}

TEST_F(Cockpit, SoundIsChosenByKeyOrByPress) {
  Drive();
  const Label& says = car.form1.lblSound;
  EXPECT_EQ(says.caption, "Sound off (F4)");
  EXPECT_TRUE(car.form1.key_down(Key::kF4));
  EXPECT_EQ(says.caption, "Sound: trouble");
  EXPECT_TRUE(minimal.key_down(Key::kF4));
  EXPECT_EQ(says.caption, "Sound: signal");
  car.form1.lblSound.click();
  EXPECT_EQ(says.caption, "Sound off (F4)");
}

TEST_F(Cockpit, ASilentRigIsHeardOnceAndItsSignalNoMore) {
  Drive();
  const Sounder& sound = car.app.forms.sound;
  car.form1.key_down(Key::kF4);
  const unsigned before = sound.plays;
  car.RunFor(5000ms);
  EXPECT_EQ(sound.plays, before) << "all is well";
  car.rig_answers = false;
  car.RunFor(30000ms);
  EXPECT_EQ(sound.plays, before + 1);
  car.rig_answers = true;
  car.form1.key_down(Key::kF4);
  car.RunFor(3000ms);
  const unsigned with_signal = sound.plays;
  EXPECT_GE(with_signal, before + 4) << "a tone with each reading";
  car.rig_answers = false;
  car.RunFor(1000ms);
  const unsigned silent = sound.plays;
  car.RunFor(8000ms);
  EXPECT_EQ(sound.plays, silent) << "no answer, no tone; this trouble was told a moment ago";
}

TEST_F(Cockpit, WhatIsRememberedIsShown) {
  car.app.forms.sound.mode = SoundMode::kSignal;
  Drive();
  EXPECT_EQ(car.form1.lblSound.caption, "Sound: signal");
}

}  // namespace
}  // namespace kestrum::test
