#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drive_process.h"

namespace kestrum::drivesim {
namespace {

using testing::HasSubstr;

// An independent client, rigctl of Debian's libhamlib-utils, drives the set. Without it these tests fail:
// the set would then be tried against nothing but our own reading of the protocol.
Ending Rigctl(const DriveProcess& drive, int model, const std::string& commands) {
  return RunShell("timeout 30 rigctl -m " + std::to_string(model) + " -r " + drive.File("com1").string() +
                  " -s 9600 " + commands);
}

constexpr int kFt817 = 1020;
constexpr int kFt840 = 1011;
constexpr int kFt847 = 1001;
constexpr int kFt857 = 1022;
constexpr int kFt897 = 1023;

TEST(Rigctl, IsInstalled) {
  EXPECT_EQ(RunShell("rigctl --version").code, 0);
}

TEST(Rigctl, DrivesTheFt817) {
  DriveProcess drive({"--log", "log"});
  drive.Tell("smeter 9");
  ASSERT_TRUE(Eventually([&] { return !ReadFile(drive.File("log")).empty(); }));
  EXPECT_EQ(Rigctl(drive, kFt817, "f").output, "3630000\n");
  EXPECT_EQ(Rigctl(drive, kFt817, "F 14200000 f").output, "14200000\n");
  EXPECT_EQ(Rigctl(drive, kFt817, "M USB 0 m").output, "USB\n2200\n");
  EXPECT_EQ(Rigctl(drive, kFt817, "F 145500000 M FM 0 f").output, "145500000\n");
  const std::string log = ReadFile(drive.File("log"));
  EXPECT_THAT(log, HasSubstr("rx 01 42 00 00 01  set frequency 14200.00 kHz\n"));
  EXPECT_THAT(log, HasSubstr("rx 14 55 00 00 01  set frequency 145500.00 kHz\n"));
  EXPECT_THAT(log, HasSubstr("  set mode FM\n"));
}

TEST(Rigctl, ReadsStrengthAndLocksTheFt817) {
  DriveProcess drive({"--log", "log"});
  drive.Tell("smeter 9");
  ASSERT_TRUE(Eventually([&] { return !ReadFile(drive.File("log")).empty(); }));
  EXPECT_EQ(Rigctl(drive, kFt817, "l STRENGTH").output, "0\n");  // S9 is its zero
  EXPECT_EQ(Rigctl(drive, kFt817, "U LOCK 1").code, 0);
  EXPECT_EQ(Rigctl(drive, kFt817, "U LOCK 0").code, 0);
  const std::string log = ReadFile(drive.File("log"));
  EXPECT_THAT(log, HasSubstr("rx 00 00 00 00 00  lock on\n"));
  EXPECT_THAT(log, HasSubstr("rx 00 00 00 00 80  lock off\n"));
}

TEST(Rigctl, SwitchesTheFt817OffAndOn) {
  DriveProcess drive({"--log", "log"});
  EXPECT_EQ(Rigctl(drive, kFt817, "set_powerstat 0").code, 0);
  EXPECT_THAT(ReadFile(drive.File("log")), HasSubstr("8F  power off\n"));
  Rigctl(drive, kFt817, "set_powerstat 1");
  EXPECT_THAT(ReadFile(drive.File("log")), HasSubstr("0F  power on\n"));
  EXPECT_EQ(Rigctl(drive, kFt817, "f").output, "3630000\n");
}

TEST(Rigctl, DrivesTheOtherSets) {
  struct Row {
    const char* name;
    int model;
  };
  for (const Row& row : {Row{"FT847", kFt847}, Row{"FT857", kFt857}, Row{"FT897", kFt897}}) {
    DriveProcess drive({"--rig", row.name});
    EXPECT_EQ(Rigctl(drive, row.model, "F 7050500 f").output, "7050500\n") << row.name;
  }
  DriveProcess drive({"--rig", "FT840"});
  EXPECT_EQ(Rigctl(drive, kFt840, "f").output, "3630000\n");
  EXPECT_EQ(Rigctl(drive, kFt840, "v").output, "VFOA\n");
}

}  // namespace
}  // namespace kestrum::drivesim
