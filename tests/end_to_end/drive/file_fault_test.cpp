// Files that cannot be written or understood, and a second instance.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>

#include "car.h"

namespace kestrum::end_to_end {
namespace {

std::string FolderOf(const Car& car) {
  const std::string with_slash = car.File("");
  return with_slash.substr(0, with_slash.size() - 1);
}

// A block that cannot be written is told in a notice; measuring goes on, and the end tells what is lost.
class LogFaults : public testing::Test {
 protected:
  void ExpectMeasuringGoesOn(const std::string& log_file) {
    CarSetup setup;
    setup.log_file = log_file;
    car_.Configure(setup);
    car_.KeepErrors();
    car_.Drive("FT840");
    const auto kestrum = car_.StartKestrum({"--start-logging"});
    // The hundredth record fills the buffer.
    ASSERT_TRUE(car_.WaitForCommands(kReadMeter, 130));
    ASSERT_TRUE(kestrum->Running());
    kestrum->Signal(SIGTERM);
    EXPECT_EQ(kestrum->Wait(), 3) << "the records after the hundredth are lost";
    EXPECT_TRUE(car_.NothingLeft());
    const std::string told = car_.Read("errors.txt");
    EXPECT_NE(told.find("Error saving data"), std::string::npos) << told;
    EXPECT_NE(told.find(log_file), std::string::npos) << told;
    setup.frequency = " 3630 kHz";
    EXPECT_EQ(car_.config(), ConfigText(setup, FolderOf(car_)));
  }

  Car car_{KESTRUM_PROGRAMS};
};

TEST_F(LogFaults, AFullDisk) {
  ExpectMeasuringGoesOn("/dev/full");
}

TEST_F(LogFaults, AFolderInPlaceOfTheFile) {
  std::filesystem::create_directory(car_.File("logs"));
  ExpectMeasuringGoesOn(car_.File("logs"));
}

TEST_F(LogFaults, AFolderThatTakesNoFile) {
  // Also refused to root, whom no permission stops.
  ExpectMeasuringGoesOn("/proc/RSSI-GPS.log");
}

TEST_F(LogFaults, APipeThatNobodyReads) {
  ASSERT_EQ(::mkfifo(car_.File("pipe").c_str(), 0666), 0);
  ExpectMeasuringGoesOn(car_.File("pipe"));
}

TEST_F(LogFaults, ALinkToItself) {
  std::filesystem::create_symlink("loop.log", car_.File("loop.log"));
  ExpectMeasuringGoesOn(car_.File("loop.log"));
}

// Pipes and devices never end, or never answer.
TEST(Config, WhatIsNoFileIsToldAndLeftAlone) {
  for (const bool is_pipe : {true, false}) {
    Car car(KESTRUM_PROGRAMS);
    car.Drive("FT840");
    const std::string path = car.File("Kestrum.cfg");
    std::filesystem::remove(path);
    if (is_pipe) {
      ASSERT_EQ(::mkfifo(path.c_str(), 0666), 0);
    } else {
      std::filesystem::create_symlink("/dev/zero", path);
    }
    const auto kestrum = car.StartKestrum({});
    EXPECT_TRUE(process::StaysTrueFor(std::chrono::milliseconds(300), [&] { return kestrum->Running(); }));
    kestrum->Signal(SIGTERM);
    EXPECT_GE(kestrum->Wait(), 0) << "it hears of the signal";
    const auto found = std::filesystem::symlink_status(path).type();
    EXPECT_EQ(found, is_pipe ? std::filesystem::file_type::fifo : std::filesystem::file_type::symlink);
  }
}

TEST(Config, ATornFileIsToldAndLeftAlone) {
  Car car(KESTRUM_PROGRAMS);
  car.Drive("FT840");
  const std::string whole = ConfigText({}, FolderOf(car));
  const std::size_t fixed_part = whole.find("Antenna1");
  // Nothing, inside the version line, behind it, inside a number, inside a flag, inside the last fixed line.
  for (const std::size_t length : {std::size_t{0}, std::size_t{20}, std::size_t{42}, std::size_t{46},
                                   whole.find("#FALSE#") + 3, fixed_part - 4}) {
    const std::string torn = whole.substr(0, length);
    process::WriteFile(car.File("Kestrum.cfg"), torn);
    const auto kestrum = car.StartKestrum({"--start-logging"});
    // The box stands before the rig and the reader are touched.
    EXPECT_TRUE(process::StaysTrueFor(std::chrono::milliseconds(300), [&] { return kestrum->Running(); }))
        << length;
    kestrum->Signal(SIGTERM);
    EXPECT_EQ(kestrum->Wait(), 0) << length;
    EXPECT_EQ(car.config(), torn) << length;
    EXPECT_TRUE(car.Readers().empty()) << length;
  }
  EXPECT_TRUE(car.rig().Commands().empty());
}

TEST(Config, AFileThatEndsBehindItsFixedPartIsWhole) {
  Car car(KESTRUM_PROGRAMS);
  car.Drive("FT840");
  const std::string whole = ConfigText({}, FolderOf(car));
  process::WriteFile(car.File("Kestrum.cfg"), whole.substr(0, whole.find("Antenna1")));
  const auto kestrum = car.StartKestrum({});
  ASSERT_TRUE(car.WaitForCommands(kReadMeter, 1));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
}

TEST(Config, WithoutAFileTheDefaultsAreSaved) {
  Car car(KESTRUM_PROGRAMS);
  car.Drive("FT817");
  std::filesystem::remove(car.File("Kestrum.cfg"));
  const auto kestrum = car.StartKestrum({});
  // The FT817 is taken as off: its mode and the lock, and nothing more.
  ASSERT_TRUE(car.WaitForCommands("00 00 00 00 80", 1));
  ASSERT_TRUE(car.WaitForReader());
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  EXPECT_TRUE(car.NothingLeft());
  const auto lines = process::Split(car.config(), "\r\n");
  ASSERT_EQ(lines.size(), 23U);
  EXPECT_EQ(lines[0], "Kestrum Auto field strenght logger V1.02");
  EXPECT_EQ(lines[1], " 1  1  4800 ");
  EXPECT_EQ(lines[2], " 5000 ");
  EXPECT_EQ(lines[17], "? m");
  EXPECT_EQ(lines[18], "3630");
  EXPECT_EQ(lines[20], car.File("RSSI-GPS.log"));
  EXPECT_EQ(lines[21], "&Off");
  EXPECT_EQ(lines[22], "Antenna1, PWR 10W");
}

TEST(SecondInstance, IsRefusedAndTouchesNothing) {
  Car car(KESTRUM_PROGRAMS);
  car.Drive("FT840");
  const auto first = car.StartKestrum({"--start-logging"});
  ASSERT_TRUE(car.WaitForCommands(kReadMeter, 5));
  ASSERT_TRUE(car.WaitForReader());
  const std::string config = car.config();
  const std::size_t set_ups = car.rig().Commands().size() - car.rig().Count(kReadMeter);
  const auto second = car.StartKestrum({"--start-logging"});
  const std::size_t readings = car.rig().Count(kReadMeter);
  ASSERT_TRUE(car.WaitForCommands(kReadMeter, readings + 10));
  ASSERT_TRUE(second->Running());
  second->Signal(SIGTERM);
  EXPECT_EQ(second->Wait(), 0);
  EXPECT_EQ(car.config(), config);
  EXPECT_EQ(car.Readers().size(), 1U);
  ASSERT_TRUE(car.WaitForCommands(kReadMeter, readings + 20));
  // It has sent the rig nothing of its own.
  EXPECT_EQ(car.rig().Commands().size() - car.rig().Count(kReadMeter), set_ups);
  first->Signal(SIGTERM);
  EXPECT_EQ(first->Wait(), 0);
  const auto records = AllRecords(car.Log());
  EXPECT_GE(records.size(), readings + 19);
}

}  // namespace
}  // namespace kestrum::end_to_end
