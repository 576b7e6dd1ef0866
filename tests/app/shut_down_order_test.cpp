#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scripted_car.h"
#include "text/text_file.h"

// What comes before what at the end of the program.
namespace kestrum::test {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;

struct LoggingCar : ScriptedCar {
  explicit LoggingCar(std::int32_t rig = kFT840) {
    Settings wanted = UsualSettings();
    wanted.RigModel = rig;
    WriteConfig(wanted, "&On");
    Start({.start_logging = true});
  }
};

TEST(ShutDownOrder, TheTimerStandsStillBeforeTheQuestion) {
  LoggingCar car(kFT817);
  bool ticking = true;
  bool port_open = false;
  car.world.dialogs.while_open = [&] {
    ticking = car.form1.tmrMain.enabled;
    port_open = car.world.serial.IsOpen();
  };
  car.app.ExitApp();
  ASSERT_EQ(car.world.dialogs.questions.size(), 1U);
  EXPECT_FALSE(ticking);
  EXPECT_TRUE(port_open);
}

TEST(ShutDownOrder, PortThenReaderThenConfigurationThenLog) {
  LoggingCar car;
  car.RunFor(milliseconds(1500));
  std::vector<std::string> steps;
  car.world.windows.on_close = [&] {
    steps.emplace_back(car.world.serial.IsOpen() ? "reader while the port is open" : "reader");
  };
  car.world.files.on_write = [&](const std::string& path) {
    if (!path.ends_with(".pending")) steps.push_back(path);
  };
  car.app.ExitApp();
  EXPECT_THAT(steps, ElementsAre("reader", "/car/Kestrum.cfg", "/car/RSSI-GPS.log"));
}

TEST(ShutDownOrder, TheAntennasAreTakenOverBeforeTheSave) {
  LoggingCar car;
  car.form1.cmbTxAntenna.items.emplace_back("Mast 2");
  car.app.ExitApp();
  EXPECT_EQ(SplitLines(car.world.files.files["/car/Kestrum.cfg"]).back(), "Mast 2");
}

TEST(ShutDownOrder, TheLastFlushWritesABlockEvenWithoutRecords) {
  LoggingCar car;
  ASSERT_EQ(car.app.log.LogCount, 0);
  car.app.ExitApp();
  const auto lines = car.Log();
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[1],
            "17-05-2026 14:03:09, 5157.00N, 00532.00E, 10 m,  FT840 LSB 3630 kHz, Antenna1, PWR 10W");
}

TEST(ShutDownOrder, AllFiveWindowsAreClosedBeforeOrAfterTheFlush) {
  for (const int records : {0, 1, 2, 5}) {
    LoggingCar car;
    car.RunFor(milliseconds(records * 1050 + 500));
    ASSERT_EQ(car.app.log.LogCount, records);
    Forms& forms = car.app.forms;
    const std::vector<Form*> windows = {&forms.form1, &forms.form2, &forms.form3, &forms.form4, &forms.form5};
    for (Form* window : windows) window->visible = true;
    int open_while_writing = 0;
    car.world.files.on_write = [&](const std::string& path) {
      if (path != car.kLogPath) return;
      open_while_writing = 0;
      for (const Form* window : windows) open_while_writing += window->visible ? 1 : 0;
    };
    car.app.ExitApp();
    EXPECT_EQ(open_while_writing, records < 2 ? 0 : 5) << records;
    for (const Form* window : windows) EXPECT_FALSE(window->visible) << records;
  }
}

TEST(ShutDownOrder, ThePositionOfAnOpenMinimalDisplayIsKept) {
  for (const bool open : {true, false}) {
    LoggingCar car;
    car.settings.MinimalLeft = 150;
    car.settings.MinimalTop = 300;
    Form5& minimal = car.app.forms.form5;
    if (open) car.form1.mnuMinimalDisplay.click();
    minimal.left = 4500;
    minimal.top = 6000;
    car.app.ExitApp();
    EXPECT_EQ(SplitLines(car.world.files.files["/car/Kestrum.cfg"])[7], open ? " 4500  6000 " : " 150  300 ");
  }
}

TEST(ShutDownOrder, TheLinksToTheReaderAreEndedAllSix) {
  LoggingCar car;
  car.app.ExitApp();
  for (const char* item : {"lblLat1", "lblLong1", "lblVal1", "lblCompas1", "lblHeight1", "lblSpeed1"}) {
    EXPECT_FALSE(car.world.links.Send(item, "late")) << item;
  }
}

TEST(ShutDownOrder, BothTimersAreStillUnderRestartMe) {
  Settings wanted = ScriptedCar::UsualSettings();
  wanted.AverageRSSI = true;
  wanted.TimeIntervalMs = 1100;
  ScriptedCar car;
  car.WriteConfig(wanted);
  car.Start();
  ASSERT_TRUE(car.form1.tmrAverageRSSI.enabled);
  car.world.dialogs.yes_no = {true};
  bool looked = false;
  car.world.dialogs.while_open = [&] {
    if (car.world.dialogs.messages.empty()) return;  // still the question
    looked = true;
    EXPECT_EQ(car.world.dialogs.messages.back().text, "Restart me");
    EXPECT_FALSE(car.form1.tmrMain.enabled);
    EXPECT_FALSE(car.form1.tmrAverageRSSI.enabled);
  };
  car.form1.mnuDefaultCfg.click();
  EXPECT_TRUE(looked);
}

TEST(StopOrder, TheLockIsAppliedBeforeTheFlush) {
  LoggingCar car;
  car.RunFor(milliseconds(2500));
  std::string written_last;
  car.world.files.on_write = [&](const std::string& path) {
    if (path == car.kLogPath) written_last = car.world.serial.LastWritten();
  };
  car.settings.DialLock = true;
  car.form1.cmdLoggin.click();
  EXPECT_EQ(written_last, Bytes({0, 0, 0, 1, 4}));
}

TEST(SaveMenu, BeepsBeforeItSaves) {
  LoggingCar car;
  int beeps_at_write = -1;
  car.world.files.on_write = [&](const std::string&) { beeps_at_write = car.world.beeper.beeps; };
  car.world.beeper.beeps = 0;
  car.form1.mnuSavecfg.click();
  EXPECT_EQ(beeps_at_write, 1);
}

}  // namespace
}  // namespace kestrum::test
