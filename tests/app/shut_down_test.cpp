#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scripted_car.h"
#include "text/text_file.h"

namespace kestrum::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Ft817Car : ScriptedCar {
  Ft817Car() {
    Settings wanted = UsualSettings();
    wanted.RigModel = kFT817;
    WriteConfig(wanted, "&On");
    Start();
    world.serial.written.clear();
  }
};

TEST(ShutDown, AsksWhetherToSwitchOffARunningFt817) {
  Ft817Car car;
  car.world.dialogs.yes_no = {true};
  car.app.ExitApp();
  ASSERT_EQ(car.world.dialogs.questions.size(), 1U);
  EXPECT_EQ(car.world.dialogs.questions[0].text, "Switch FT817 Off (Y/N) ");
  EXPECT_EQ(car.world.dialogs.questions[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(car.world.dialogs.questions[0].icon, Icon::kQuestion);
  EXPECT_THAT(car.world.serial.written, ElementsAre(Bytes({0, 0, 0, 0, 0}), Bytes({0, 0, 0, 0, 0x8F})));
  EXPECT_EQ(SplitLines(car.world.files.files["/car/Kestrum.cfg"])[21], "&Off");
}

TEST(ShutDown, AnswerNoLeavesTheSetOnAndStillSavesAndFlushes) {
  Ft817Car car;
  car.form1.cmdLoggin.click();
  car.RunFor(milliseconds(3500));
  car.world.serial.written.clear();
  car.world.dialogs.yes_no = {false};
  car.app.ExitApp();
  EXPECT_THAT(car.world.serial.written, IsEmpty());
  EXPECT_EQ(SplitLines(car.world.files.files["/car/Kestrum.cfg"])[21], "&On");
  EXPECT_EQ(car.Log().size(), 3U + 3U);
  EXPECT_TRUE(car.world.program.Ended());
}

TEST(ShutDown, DoesNotAskForAnotherRigAClosedPortOrASetThatIsOff) {
  for (const int variant : {0, 1, 2}) {
    ScriptedCar car;
    Settings wanted = ScriptedCar::UsualSettings();
    wanted.RigModel = variant == 0 ? kFT840 : kFT817;
    car.WriteConfig(wanted, variant == 1 ? "&Off" : "&On");
    car.Start();
    if (variant == 2) car.world.serial.Vanish();
    car.app.ExitApp();
    EXPECT_THAT(car.world.dialogs.questions, IsEmpty()) << variant;
    EXPECT_TRUE(car.world.program.Ended()) << variant;
  }
}

TEST(ShutDown, WithoutAskingTakesTheQuestionAsNo) {
  Ft817Car car;
  car.form1.cmdLoggin.click();
  car.RunFor(milliseconds(2500));
  car.world.serial.written.clear();
  car.app.ExitWithoutAsking();
  EXPECT_THAT(car.world.dialogs.questions, IsEmpty());
  EXPECT_THAT(car.world.serial.written, IsEmpty());
  EXPECT_EQ(car.Log().size(), 3U + 2U);
  EXPECT_EQ(SplitLines(car.world.files.files["/car/Kestrum.cfg"])[21], "&On");
}

TEST(ShutDown, SignalUnderTheOpenQuestionEndsItAsNo) {
  Ft817Car car;
  car.world.dialogs.yes_no = {true};
  car.world.dialogs.while_open = [&car] { car.app.ExitWithoutAsking(); };
  car.app.ExitApp();
  EXPECT_THAT(car.world.serial.written, IsEmpty());
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_EQ(car.world.files.replaces, 1);
}

TEST(ShutDown, SavesPositionsAntennasAndClosesPortReaderAndLinks) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  car.form1.left = 1500;
  car.form1.top = 300;
  for (int number = 2; number <= 30; ++number) {
    car.form1.cmbTxAntenna.items.push_back("Mast " + std::to_string(number));
  }
  car.world.links.events.clear();
  car.app.ExitApp();
  const auto lines = SplitLines(car.world.files.files["/car/Kestrum.cfg"]);
  EXPECT_EQ(lines[6], " 1500  300 ");
  ASSERT_EQ(lines.size(), 22U + 21U);
  EXPECT_EQ(lines[22], "Antenna1, PWR 10W");
  EXPECT_EQ(lines[42], "Mast 21");
  EXPECT_FALSE(car.world.serial.IsOpen());
  EXPECT_THAT(car.world.windows.closed, ElementsAre("Posdex Version 1.19"));
  EXPECT_THAT(car.world.links.events, Contains("unlink Posdex|form1 lblLat1"));
  EXPECT_FALSE(car.form1.visible);
  EXPECT_FALSE(car.form1.tmrMain.enabled);
}

TEST(ShutDown, SendsNothingToAReaderThatIsNotThere) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  car.world.windows.titles.clear();
  car.app.ExitApp();
  EXPECT_THAT(car.world.windows.closed, IsEmpty());
}

// With two or more records in the buffer the windows stay until the block stands in the file.
TEST(ShutDown, WindowsStayOpenUntilALongerBlockIsWritten) {
  for (const int records : {1, 2}) {
    ScriptedCar car;
    car.WriteConfig(ScriptedCar::UsualSettings());
    car.Start({.start_logging = true});
    car.RunFor(milliseconds(records * 1050 + 500));
    ASSERT_EQ(car.app.log.LogCount, records);
    car.world.files.write_fault = "No space left on device";
    bool visible_while_writing = false;
    car.world.dialogs.while_open = [&] { visible_while_writing = car.form1.visible; };
    car.world.files.replaces = 0;
    car.app.ExitApp();
    EXPECT_EQ(visible_while_writing, records == 2);
    EXPECT_FALSE(car.form1.visible);
  }
}

TEST(ShutDown, DropsRecordsOfAStoppedLog) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start();
  car.RunFor(seconds(5));
  car.app.ExitApp();
  EXPECT_THAT(car.Log(), IsEmpty());
}

TEST(ShutDown, NothingRunsAfterTheEnd) {
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start({.start_logging = true});
  car.app.ExitApp();
  const auto written = car.world.serial.written.size();
  car.form1.tmrMain.tick();
  car.app.ExitApp();
  car.app.ExitWithoutAsking();
  EXPECT_EQ(car.world.serial.written.size(), written);
  EXPECT_EQ(car.world.files.replaces, 1);
}

TEST(ShutDown, DefaultConfigEndsWithoutTheShutdownSteps) {
  Ft817Car car;
  car.form1.cmdLoggin.click();
  car.RunFor(milliseconds(2500));
  car.world.serial.written.clear();
  car.world.dialogs.yes_no = {true};
  car.form1.mnuDefaultCfg.click();
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_THAT(car.world.serial.written, IsEmpty());
  EXPECT_EQ(car.world.dialogs.questions.size(), 1U);
  EXPECT_EQ(car.world.files.replaces, 1);
  EXPECT_THAT(car.Log(), IsEmpty());
}

}  // namespace
}  // namespace kestrum::test
