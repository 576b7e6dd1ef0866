// The system asks the program to end, whatever it is doing.
#include <gtest/gtest.h>

#include <csignal>
#include <random>

#include "car.h"

namespace kestrum::end_to_end {
namespace {

using process::Eventually;
using std::chrono::milliseconds;

constexpr auto kQuick = std::chrono::seconds(5);

class Ending : public testing::TestWithParam<int> {
 protected:
  void ExpectSaved() const { EXPECT_NE(car_.config().find("\r\n 3630 kHz\r\n"), std::string::npos); }

  Car car_{KESTRUM_PROGRAMS};
};

TEST_P(Ending, DuringACycle) {
  car_.Drive("FT840");
  CarSetup setup;
  setup.interval_ms = 10;  // the fifty milliseconds of a reading are most of the time
  car_.Configure(setup);
  std::mt19937 random(static_cast<unsigned>(GetParam()));
  std::size_t readings_before = 0;
  std::size_t records_before = 0;
  for (int round = 0; round < 3; ++round) {
    const auto kestrum = car_.StartKestrum({"--start-logging"});
    ASSERT_TRUE(car_.WaitForCommands(kReadMeter, readings_before + 5));
    ASSERT_TRUE(car_.WaitForReader());
    process::LetComeWithin(milliseconds(60), random);
    kestrum->Signal(GetParam());
    EXPECT_EQ(kestrum->Wait(kQuick), 0);
    ExpectSaved();
    // Every reading is in the file, but for the one that was not a record yet.
    const std::size_t readings = car_.rig().Count(kReadMeter);
    const std::size_t records = AllRecords(car_.Log()).size();
    EXPECT_LE((readings - readings_before) - (records - records_before), 1U);
    readings_before = readings;
    records_before = records;
  }
  EXPECT_EQ(car_.Log().size(), 3U);
  EXPECT_TRUE(car_.NothingLeft());
}

TEST_P(Ending, DuringTheWaitForTheFirstFix) {
  car_.Drive("FT840");
  car_.TellDrive("nofix");
  CarSetup setup;
  setup.by_distance = true;
  car_.Configure(setup);
  const auto kestrum = car_.StartKestrum({"--start-logging"});
  // Set up, logging started; the first tick comes after 1100 ms.
  ASSERT_TRUE(car_.WaitForCommands("00 00 00 00 04", 2));
  ASSERT_TRUE(car_.WaitForReader());
  EXPECT_TRUE(
      process::StaysTrueFor(milliseconds(2000), [this] { return car_.rig().Count(kReadMeter) == 0; }));
  kestrum->Signal(GetParam());
  EXPECT_EQ(kestrum->Wait(kQuick), 0);
  ExpectSaved();
  EXPECT_TRUE(AllRecords(car_.Log()).empty());
  EXPECT_TRUE(car_.NothingLeft());
}

TEST_P(Ending, WithAMessageBoxOpen) {
  // The FT817 is off, so starting to log is answered with a box; measuring goes on under it.
  CarSetup setup;
  setup.rig = 1;
  car_.Configure(setup);
  car_.Drive("FT817");
  const auto kestrum = car_.StartKestrum({"--start-logging"});
  ASSERT_TRUE(car_.WaitForCommands("00 00 00 00 80", 1));
  ASSERT_TRUE(car_.WaitForReader());
  kestrum->Signal(GetParam());
  EXPECT_EQ(kestrum->Wait(kQuick), 0);
  EXPECT_TRUE(car_.NothingLeft());
  // Not logging, so nothing is written.
  EXPECT_EQ(car_.Read("RSSI-GPS.log"), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, Ending, testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& signal) { return "Signal" + std::to_string(signal.param); });

TEST(FirstFix, IsRecordedWhenItComes) {
  Car car(KESTRUM_PROGRAMS);
  car.Drive("FT840");
  car.TellDrive("nofix");
  CarSetup setup;
  setup.by_distance = true;
  car.Configure(setup);
  const auto kestrum = car.StartKestrum({"--start-logging"});
  ASSERT_TRUE(Eventually([&] { return car.Readers().size() == 1; }));
  ASSERT_TRUE(car.WaitForCommands("00 00 00 00 04", 2));
  car.TellDrive("clear");
  ASSERT_TRUE(car.WaitForCommands(kReadMeter, 1));
  // The record follows its reading within the same cycle.
  process::LetRunFor(milliseconds(500));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  const auto records = AllRecords(car.Log());
  ASSERT_GE(records.size(), 1U);
  EXPECT_EQ(records[0][kValidity], "GPS Ok");
}

}  // namespace
}  // namespace kestrum::end_to_end
