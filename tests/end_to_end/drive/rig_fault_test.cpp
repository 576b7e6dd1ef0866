// The rig and its cable go wrong in mid-drive.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <set>

#include "car.h"

namespace kestrum::end_to_end {
namespace {

using process::Eventually;

class RigFaults : public testing::Test {
 protected:
  RigFaults() { car_.Drive("FT840"); }

  void Tell(const std::string& line) {
    car_.TellDrive(line);
    ASSERT_TRUE(Eventually([&] { return car_.rig().Says("control: " + line); })) << line;
  }
  // Waits for so many readings from now on.
  void MeasureTimes(std::size_t count) {
    ASSERT_TRUE(car_.WaitForCommands(kReadMeter, car_.rig().Count(kReadMeter) + count));
  }
  static std::size_t CountRaw(const std::vector<Record>& records, const std::string& raw) {
    return static_cast<std::size_t>(
        std::count_if(records.begin(), records.end(), [&](const Record& r) { return r[kRaw] == raw; }));
  }

  Car car_{KESTRUM_PROGRAMS};
};

// The meter shows another value in each stretch, so that a record tells when it was made.
TEST_F(RigFaults, SpoiledRepliesCountAsNothingAndTheNextGoodOneCounts) {
  struct Stretch {
    const char* fault;
    bool is_read;  // whether the meter's value may be taken from such replies
  };
  const std::vector<Stretch> stretches = {{"silence", false}, {"garbage", true}, {"short", false},
                                          {"wrong", false},   {"long", true},    {"late", true}};
  Tell("smeter 200");
  const auto kestrum = car_.StartKestrum({"--start-logging"});
  MeasureTimes(8);
  for (std::size_t i = 0; i < stretches.size(); ++i) {
    Tell("smeter " + std::to_string(40 + i));
    Tell(stretches[i].fault);
    // A reply on its way when the fault began was still a good one of this stretch.
    MeasureTimes(8);
    Tell("smeter " + std::to_string(201 + i));
    Tell("clear");
    MeasureTimes(8);
  }
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);

  const auto records = AllRecords(car_.Log());
  EXPECT_GE(CountRaw(records, "200"), 3U);
  for (std::size_t i = 0; i < stretches.size(); ++i) {
    const std::size_t taken = CountRaw(records, std::to_string(40 + i));
    if (!stretches[i].is_read) {
      EXPECT_LE(taken, 1U) << stretches[i].fault;
    }
    if (stretches[i].fault == std::string("long") || stretches[i].fault == std::string("late")) {
      EXPECT_GE(taken, 3U) << stretches[i].fault;
    }
    EXPECT_GE(CountRaw(records, std::to_string(201 + i)), 3U) << "after " << stretches[i].fault;
  }
  EXPECT_GE(CountRaw(records, "0"), 3U * 5U);
}

TEST_F(RigFaults, AVanishedPortLeavesTheProgramAliveAndLogging) {
  Tell("smeter 98");
  const auto kestrum = car_.StartKestrum({"--start-logging"});
  MeasureTimes(10);
  const std::size_t before = car_.rig().Count(kReadMeter);
  Tell("vanish");
  ASSERT_TRUE(Eventually([&] { return car_.rig().Says("com1 vanished"); }));
  const std::size_t readings = car_.rig().Count(kReadMeter);
  EXPECT_LE(readings - before, 20U);
  // The buffer goes on filling with failed readings until a block is full.
  ASSERT_TRUE(Eventually([&] { return !car_.Read("RSSI-GPS.log").empty(); }));
  EXPECT_TRUE(kestrum->Running());

  // A port that returns is not taken without being chosen.
  Tell("clear");
  ASSERT_TRUE(Eventually([&] { return car_.rig().Says("com1 returned"); }));
  ASSERT_TRUE(kestrum->Running());
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  const auto records = AllRecords(car_.Log());
  ASSERT_GE(records.size(), 100U);
  EXPECT_EQ(records[5][kRaw], "98");
  EXPECT_EQ(records[90][kRaw], "0");
  EXPECT_EQ(records[90][kSText], "S0");
  EXPECT_EQ(car_.rig().Count(kReadMeter), readings);
}

TEST_F(RigFaults, APortThatIsNotThereAtTheStartIsNoObstacle) {
  CarSetup setup;
  setup.port = 6;
  car_.Configure(setup);
  const auto kestrum = car_.StartKestrum({"--start-logging"}, {{"KESTRUM_COM6", car_.File("com6")}});
  ASSERT_TRUE(Eventually([&] { return !car_.Read("RSSI-GPS.log").empty(); }));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  const auto records = AllRecords(car_.Log());
  EXPECT_EQ(CountRaw(records, "0"), records.size());
  EXPECT_TRUE(car_.rig().Commands().empty());
}

}  // namespace
}  // namespace kestrum::end_to_end
