// A drive from start to end, with nothing going wrong.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <regex>

#include "car.h"

namespace kestrum::end_to_end {
namespace {

using process::Eventually;

// Every position of the log is one that the receiver sent, in the order in which it sent them.
void ExpectPositionsAsSent(const std::vector<Record>& records, const std::vector<std::string>& sent) {
  auto from = sent.begin();
  std::size_t with_fix = 0;
  for (const Record& record : records) {
    if (record[kValidity] != "GPS Ok") continue;
    ++with_fix;
    const std::string position = record[kLatitude] + " " + record[kLongitude];
    const auto found = std::find(from, sent.end(), position);
    ASSERT_NE(found, sent.end()) << position << " was not sent, or not then";
    from = found;
  }
  EXPECT_GT(with_fix, 0U);
}

double Degrees(const std::string& text, std::size_t degree_digits) {
  const double degrees =
      std::stod(text.substr(0, degree_digits)) + std::stod(text.substr(degree_digits)) / 60;
  return text.ends_with('S') || text.ends_with('W') ? -degrees : degrees;
}

// Distance and bearing as any map program has them, so to a per mille of the earth's shape.
void ExpectGeometry(const Record& record) {
  constexpr double kRadians = 3.14159265358979 / 180;
  const double north_km = (51.95 - Degrees(record[kLatitude], 2)) * 111.19;
  const double east_km = (5.5333333 - Degrees(record[kLongitude], 3)) * 111.19 * std::cos(51.95 * kRadians);
  const double distance_km = std::hypot(north_km, east_km);
  EXPECT_NEAR(std::stod(record[kDistance]), distance_km, distance_km / 100 + 0.02);
  double bearing_deg = std::atan2(east_km, north_km) / kRadians;
  if (bearing_deg < 0) bearing_deg += 360;
  const double off_deg = std::remainder(std::stod(record[kBearing]) - bearing_deg, 360);
  EXPECT_NEAR(off_deg, 0, 1.5) << record[kBearing] << " and " << bearing_deg;
}

TEST(Drive, IsLoggedAsItWasMeasured) {
  Car car(KESTRUM_PROGRAMS);
  car.Drive("FT840", 2);
  car.TellDrive("smeter 128");
  const auto kestrum = car.StartKestrum({"--start-logging"});
  ASSERT_TRUE(car.WaitForCommands(kReadMeter, 5));
  // Some seconds of road with a fix, and a full block.
  ASSERT_TRUE(Eventually([&] { return car.tap().Passed().size() >= 6; }));
  ASSERT_TRUE(Eventually([&] { return !car.Read("RSSI-GPS.log").empty(); }));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  EXPECT_TRUE(car.NothingLeft());

  const auto commands = car.rig().Commands();
  ASSERT_GT(commands.size(), 4U);
  // LSB, lock off, 3630 kHz, lock off again as logging starts.
  const std::vector<std::string> start_up(commands.begin(), commands.begin() + 4);
  EXPECT_THAT(start_up,
              testing::ElementsAre("00 00 00 00 0C", "00 00 00 00 04", "00 30 36 00 0A", "00 00 00 00 04"));
  EXPECT_EQ(car.rig().Count(kReadMeter), commands.size() - 4);

  const auto blocks = car.Log();
  ASSERT_EQ(blocks.size(), 2U);
  EXPECT_EQ(blocks[0].records.size(), 100U);
  const std::regex header(
      R"(\d\d-\d\d-20\d\d \d\d:\d\d:\d\d, 5157\.00N, 00532\.00E, 25 m,  FT840 LSB 3630 kHz, )"
      R"(Antenna1, PWR 10W)");
  for (const Block& block : blocks) EXPECT_TRUE(std::regex_match(block.header, header)) << block.header;
  const auto records = AllRecords(blocks);
  ExpectPositionsAsSent(records, car.tap().Passed());
  // A reading in flight when the end came is no record.
  EXPECT_LE(car.rig().Count(kReadMeter) - records.size(), 1U);
  const Record& last = blocks[0].records.back();
  EXPECT_EQ(last[kRaw], "128");
  EXPECT_EQ(last[kSText], "S9");
  EXPECT_EQ(last[kUv], "50 uV");
  EXPECT_EQ(last[kMvm], "20.7 mV/m");
  ExpectGeometry(last);
}

TEST(Drive, SavesTheConfiguration) {
  Car car(KESTRUM_PROGRAMS);
  car.Drive("FT840");
  const auto kestrum = car.StartKestrum({"--start-logging", "--minimal"});
  ASSERT_TRUE(car.WaitForCommands(kReadMeter, 3));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  // The frequency is saved as the rig panel shows it.
  CarSetup saved;
  saved.frequency = " 3630 kHz";
  const std::string folder = car.File("").substr(0, car.File("").size() - 1);
  EXPECT_EQ(car.config(), ConfigText(saved, folder));
}

TEST(Drive, AnFt817ThatWasOnIsSwitchedOnAndReadWithPositionsOfGpsd) {
  Car car(KESTRUM_PROGRAMS);
  CarSetup setup;
  setup.rig = 1;
  setup.power_caption = "&On";
  car.Configure(setup);
  car.Drive("FT817", 2);
  car.TellDrive("smeter 9");
  const auto port = process::FreePort();
  const process::Gpsd gpsd(port, car.tap().device());
  process::WriteFile(car.File("posdex.conf"), "source=gpsd:localhost:" + std::to_string(port) + "\n");
  const auto kestrum = car.StartKestrum({"--start-logging"});
  ASSERT_TRUE(car.WaitForCommands(kReadStatus, 5));
  // gpsd listens to its receiver as soon as the reader asks it.
  const std::size_t before = car.tap().Passed().size();
  ASSERT_TRUE(Eventually([&] { return car.tap().Passed().size() >= before + 6; }));
  ASSERT_TRUE(Eventually([&] { return !car.Read("RSSI-GPS.log").empty(); }));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  EXPECT_TRUE(car.NothingLeft());

  const auto commands = car.rig().Commands();
  ASSERT_GT(commands.size(), 7U);
  // LSB; wake-up, on and LSB; lock off; 3630 kHz; lock off again as logging starts.
  const std::vector<std::string> start_up(commands.begin(), commands.begin() + 7);
  EXPECT_THAT(start_up,
              testing::ElementsAre("00 00 00 00 07", "00 00 00 00 00", "00 00 00 00 0F", "00 00 00 00 07",
                                   "00 00 00 00 80", "00 36 30 00 01", "00 00 00 00 80"));
  EXPECT_EQ(car.rig().Count(kReadStatus), commands.size() - 7);

  const auto blocks = car.Log();
  ASSERT_EQ(blocks.size(), 2U);
  EXPECT_NE(blocks[0].header.find(",  FT817 LSB 3630 kHz, "), std::string::npos) << blocks[0].header;
  const auto records = AllRecords(blocks);
  ExpectPositionsAsSent(records, car.tap().Passed());
  EXPECT_EQ(blocks[0].records.back()[kRaw], "144");
  // The set stays on, and so does the button.
  EXPECT_NE(car.config().find("\r\n&On\r\n"), std::string::npos);
  EXPECT_EQ(commands.back(), kReadStatus);
}

TEST(Drive, AReaderThatAlreadyRunsIsUsedAndClosed) {
  Car car(KESTRUM_PROGRAMS);
  car.Drive("FT840", 4);
  const auto reader = car.StartReader();
  ASSERT_TRUE(Eventually([&] { return process::Handles(reader->pid(), SIGTERM); }));
  ASSERT_TRUE(Eventually([&] { return car.tap().Passed().size() >= 2; }));
  const auto kestrum = car.StartKestrum({"--start-logging"});
  ASSERT_TRUE(car.WaitForCommands(kReadMeter, 20));
  EXPECT_EQ(car.Readers().size(), 1U);
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  EXPECT_EQ(reader->Wait(), 0);
  ExpectPositionsAsSent(AllRecords(car.Log()), car.tap().Passed());
}

}  // namespace
}  // namespace kestrum::end_to_end
