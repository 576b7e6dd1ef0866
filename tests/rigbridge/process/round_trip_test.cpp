// The real programs in a row: Kestrum, rigbridge, Hamlib's FT-817 driver, a simulated FT817 with a level
// drive.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "bridge_process.h"
#include "car.h"

namespace kestrum::rigbridge {
namespace {

using process::Eventually;

struct Level {
  int step;  // of the simulated FT817's meter
  const char* raw;
  const char* s_text;
};
constexpr Level kLevels[] = {
    {0, "0", "S0"},           {1, "1", "S1"},           {2, "2", "S2"},           {3, "8", "S3"},
    {4, "18", "S4"},          {5, "32", "S5"},          {6, "50", "S6"},          {7, "72", "S7"},
    {8, "98", "S8"},          {9, "128", "S9"},         {10, "162", "S9 + 10dB"}, {11, "180", "S9 + 20dB"},
    {12, "198", "S9 + 30dB"}, {13, "216", "S9 + 40dB"}, {14, "234", "S9 + 50dB"}, {15, "255", "S9 + 60dB"}};

TEST(RoundTrip, TheLogHoldsTheLevelsOfTheDrive) {
  end_to_end::Car car(KESTRUM_PROGRAMS);
  car.Drive("FT817");
  end_to_end::CarSetup setup;
  setup.port = 2;
  setup.interval_ms = 100;
  setup.frequency = " 7050.5 kHz";
  car.Configure(setup);
  car.TellDrive("smeter 0");
  BridgeProcess bridge(car.File("."), {"--link", "com2", "--model", "1020", "--device", car.File("com1")});
  ASSERT_TRUE(bridge.Says("Reading the rig."));
  const auto kestrum = car.StartKestrum({"--start-logging"});
  ASSERT_TRUE(Eventually([&] { return car.rig().Says("set frequency 7050.50 kHz"); }));
  EXPECT_TRUE(Eventually([&] { return car.rig().Says("set mode LSB"); }));
  for (const Level& level : kLevels) {
    car.TellDrive("smeter " + std::to_string(level.step));
    ASSERT_TRUE(Eventually([&] { return car.rig().Says("control: smeter " + std::to_string(level.step)); }));
    // So many reads by the bridge last longer than some cycles of the logger.
    ASSERT_TRUE(car.WaitForCommands(end_to_end::kReadStatus, car.rig().Count(end_to_end::kReadStatus) + 6));
  }
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);

  std::vector<std::pair<std::string, std::string>> seen;
  for (const auto& record : end_to_end::AllRecords(car.Log())) {
    const std::pair<std::string, std::string> reading{record[end_to_end::kRaw], record[end_to_end::kSText]};
    if (seen.empty() || seen.back() != reading) seen.push_back(reading);
  }
  std::vector<std::pair<std::string, std::string>> expected;
  for (const Level& level : kLevels) expected.emplace_back(level.raw, level.s_text);
  EXPECT_EQ(seen, expected);
}

}  // namespace
}  // namespace kestrum::rigbridge
