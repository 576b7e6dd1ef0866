// The GPS reader, its daemon or the session bus is missing, dies or comes back.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

#include "car.h"

namespace kestrum::end_to_end {
namespace {

using process::Eventually;

class GpsFaults : public testing::Test {
 protected:
  // Four positions a second.
  GpsFaults() { car_.Drive("FT840", 4); }

  bool ReaderSays(const std::string& validity) {
    return Eventually([&] { return car_.AskReader("lblVal1") == validity; });
  }

  // Waits until the receiver has sent so many more positions through the cable.
  void PassPositions(std::size_t count) {
    const std::size_t before = car_.tap().Passed().size();
    ASSERT_TRUE(Eventually([&] { return car_.tap().Passed().size() >= before + count; }));
  }
  // Records that carry one of the positions.
  static std::size_t CountWith(const std::vector<Record>& records,
                               const std::vector<std::string>& positions) {
    return static_cast<std::size_t>(std::count_if(records.begin(), records.end(), [&](const Record& record) {
      const std::string position = record[kLatitude] + " " + record[kLongitude];
      return std::find(positions.begin(), positions.end(), position) != positions.end();
    }));
  }
  static std::vector<std::string> From(const std::vector<std::string>& positions, std::size_t first) {
    return {positions.begin() + static_cast<std::ptrdiff_t>(std::min(first, positions.size())),
            positions.end()};
  }
  std::vector<Record> End(process::Child& kestrum) {
    kestrum.Signal(SIGTERM);
    EXPECT_EQ(kestrum.Wait(), 0);
    return AllRecords(car_.Log());
  }

  Car car_{KESTRUM_PROGRAMS};
};

TEST_F(GpsFaults, AKilledReaderLeavesTheLastPositionAndIsPickedUpAgain) {
  const auto kestrum = car_.StartKestrum({"--start-logging"});
  ASSERT_TRUE(car_.WaitForCommands(kReadMeter, 5));
  ASSERT_TRUE(ReaderSays("A"));
  PassPositions(4);
  car_.tap().Cut(true);
  ASSERT_EQ(::kill(car_.Readers().front(), SIGKILL), 0);
  ASSERT_TRUE(Eventually([&] { return car_.Readers().empty(); }));
  ASSERT_TRUE(Eventually([&] { return car_.tap().Swallowed().size() >= 3; }));
  EXPECT_TRUE(kestrum->Running());
  const std::size_t before = car_.tap().Passed().size();
  const auto reader = car_.StartReader();
  car_.tap().Cut(false);
  ASSERT_TRUE(ReaderSays("A"));
  PassPositions(8);
  const auto records = End(*kestrum);
  EXPECT_EQ(reader->Wait(), 0);

  // The captions hold what they held: the last position, and that it was a good one.
  const auto first_fix = std::find_if(records.begin(), records.end(),
                                      [](const Record& record) { return record[kValidity] == "GPS Ok"; });
  ASSERT_NE(first_fix, records.end());
  for (auto record = first_fix; record != records.end(); ++record) EXPECT_EQ((*record)[kValidity], "GPS Ok");
  EXPECT_EQ(CountWith(records, car_.tap().Swallowed()), 0U);
  EXPECT_GT(CountWith(records, From(car_.tap().Passed(), before)), 0U);
}

TEST_F(GpsFaults, AStoppedGpsdLeavesTheLastPositionAndItsReturnIsSeen) {
  const auto port = process::FreePort();
  process::Gpsd gpsd(port, car_.tap().device());
  process::WriteFile(car_.File("posdex.conf"), "source=gpsd:localhost:" + std::to_string(port) + "\n");
  CarSetup setup;
  setup.interval_ms = 200;
  car_.Configure(setup);
  const auto kestrum = car_.StartKestrum({"--start-logging"});
  ASSERT_TRUE(car_.WaitForCommands(kReadMeter, 2));
  ASSERT_TRUE(ReaderSays("A"));
  PassPositions(5);
  gpsd.Kill();
  car_.tap().Cut(true);
  ASSERT_TRUE(ReaderSays("V"));
  ASSERT_TRUE(Eventually([&] { return car_.tap().Swallowed().size() >= 3; }));
  gpsd.Start();
  const std::size_t before = car_.tap().Passed().size();
  car_.tap().Cut(false);
  ASSERT_TRUE(ReaderSays("A"));
  PassPositions(8);
  const auto records = End(*kestrum);
  EXPECT_TRUE(car_.NothingLeft());
  const auto passed = car_.tap().Passed();
  EXPECT_GT(CountWith(records, {passed.begin(), passed.begin() + static_cast<std::ptrdiff_t>(before)}), 0U);
  EXPECT_EQ(CountWith(records, car_.tap().Swallowed()), 0U);
  EXPECT_GT(CountWith(records, From(passed, before)), 0U);
}

TEST_F(GpsFaults, WithoutTheReaderProgramABoxWaitsAndASignalEndsIt) {
  std::filesystem::remove(car_.File("Posdex"));
  const std::string before = car_.config();
  const auto kestrum = car_.StartKestrum({"--start-logging"});
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  // It had not started yet: nothing is saved and nothing has been sent.
  EXPECT_EQ(car_.config(), before);
  EXPECT_TRUE(car_.rig().Commands().empty());
}

// Starts without a bus, measures and ends.
void ExpectADriveWithoutABus(Car& car, const Car::Environment& environment) {
  const auto kestrum = car.StartKestrum({"--start-logging"}, environment);
  ASSERT_TRUE(car.WaitForCommands(kReadMeter, 10));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  const auto records = AllRecords(car.Log());
  ASSERT_GE(records.size(), 9U);
  for (const Record& record : records) EXPECT_EQ(record[kValidity], "No GPS");
  EXPECT_NE(car.config().find("\r\n 3630 kHz\r\n"), std::string::npos);
}

TEST_F(GpsFaults, ABusThatIsNotThereIsNoObstacle) {
  ExpectADriveWithoutABus(car_, {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + car_.File("nowhere")}});
}

TEST_F(GpsFaults, NoBusAtAllIsNoObstacle) {
  ExpectADriveWithoutABus(car_,
                          {{"DBUS_SESSION_BUS_ADDRESS", std::nullopt}, {"XDG_RUNTIME_DIR", std::nullopt}});
}

}  // namespace
}  // namespace kestrum::end_to_end
