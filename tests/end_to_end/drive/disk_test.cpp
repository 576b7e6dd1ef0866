// A disk that is slow, dead or full under the real program.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "car.h"

namespace kestrum::end_to_end {
namespace {

// The log lies in a folder of its own, on the bad disk.
class BadDisk : public testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directory(car_.File("disk"));
    CarSetup setup;
    setup.log_file = car_.File("disk/drive.log");
    car_.Configure(setup);
    car_.KeepErrors();
    car_.Drive("FT840");
  }
  std::unique_ptr<process::Child> StartOn(const std::string& what, const std::string& value) {
    return car_.StartKestrum(
        {"--start-logging"},
        {{"LD_PRELOAD", KESTRUM_DISK_SHIM}, {"KESTRUM_DISK_FOLDER", car_.File("disk")}, {what, value}});
  }

  Car car_{KESTRUM_PROGRAMS};
};

TEST_F(BadDisk, ASlowOneNeverHoldsTheMeasuringAndGetsEveryRecord) {
  const auto kestrum = StartOn("KESTRUM_DISK_SYNC_MS", "1000");
  // Waiting for the disk once a record, these would take two minutes; half of that is plenty.
  ASSERT_TRUE(
      process::Eventually([this] { return car_.rig().Count(kReadMeter) >= 120; }, std::chrono::minutes(1)));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0) << car_.Read("errors.txt");
  const std::size_t readings = car_.rig().Count(kReadMeter);
  const std::size_t records = AllRecords(ParseLog(car_.Read("disk/drive.log"))).size();
  EXPECT_GE(records + 1, readings);
  EXPECT_LE(records, readings);
  EXPECT_FALSE(std::filesystem::exists(car_.File("disk/drive.log.pending")));
}

TEST_F(BadDisk, ADeadOneHoldsNeitherTheMeasuringNorTheEnd) {
  const auto kestrum = StartOn("KESTRUM_DISK_SYNC_MS", "3600000");
  ASSERT_TRUE(car_.WaitForCommands(kReadMeter, 120));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(std::chrono::seconds(60)), 3);
  EXPECT_NE(car_.Read("errors.txt").find("the disk does not answer"), std::string::npos);
}

TEST_F(BadDisk, AFullOneKeepsWholeBlocks) {
  // The first block has place, its journal too; the second has not.
  const auto kestrum = StartOn("KESTRUM_DISK_FULL", "30000");
  ASSERT_TRUE(car_.WaitForCommands(kReadMeter, 230));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 3);
  EXPECT_NE(car_.Read("errors.txt").find("No space left on device"), std::string::npos);
  const auto blocks = ParseLog(car_.Read("disk/drive.log"));
  ASSERT_EQ(blocks.size(), 1U);
  EXPECT_EQ(blocks.front().records.size(), 100U);
}

}  // namespace
}  // namespace kestrum::end_to_end
