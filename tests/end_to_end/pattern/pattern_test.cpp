// The simulated transmitter's pattern, found again in the log that Kestrum wrote on the way.
#include "analysis/pattern.h"

#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <vector>

#include "analysis/distribution.h"
#include "analysis/law.h"
#include "analysis/samples.h"
#include "antenna.h"
#include "car.h"
#include "log/log_file.h"

namespace kestrum::end_to_end {
namespace {

using drivesim::Antenna;
using drivesim::AntennaGainDb;

constexpr double kSectorDeg = 10;
constexpr std::size_t kEnoughRecords = 20;
// The single vertical is 15 dB above S9 at 1 km, and S9 is 20.7 mV/m in the default calibration: 86.32
// dBuV/m.
constexpr double kVerticalAt1KmDb = 101.32;

// What the transmitter sends into each sector, in the middle of the directions that records were made in.
std::vector<double> SentBySector(const std::vector<orvandi::Sample>& samples, Antenna antenna) {
  std::vector<std::vector<double>> levels(orvandi::SectorCount(kSectorDeg));
  for (const orvandi::Sample& sample : samples) {
    levels[orvandi::SectorOf(sample.bearing_deg, kSectorDeg)].push_back(
        kVerticalAt1KmDb + AntennaGainDb(antenna, sample.bearing_deg));
  }
  std::vector<double> sent;
  for (auto& sector : levels) sent.push_back(orvandi::Quantile(sector, 0.5));
  return sent;
}

TEST(DrivenPattern, IsThatOfTheTransmitter) {
  Car car(KESTRUM_PROGRAMS);
  CarSetup setup;
  setup.antenna = "Beam 235 deg, PWR 10W";
  car.Configure(setup);
  // Forty minutes of road in two and a half; the first moments pass before the logger is up. Faster, a
  // position lies too far behind its reading where the pattern is steep.
  car.Drive("FT840", 16, {"--laps", "1.03", "--antenna", "beam"});
  const auto kestrum = car.StartKestrum({"--start-logging"});
  ASSERT_TRUE(car.WaitForArrival(std::chrono::seconds(240)));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);

  orvandi::LogFile log(car.File("RSSI-GPS.log"));
  const auto outcome = log.Open();
  ASSERT_TRUE(outcome.ok) << outcome.sentence;
  EXPECT_TRUE(log.Content().dropped.empty());
  EXPECT_EQ(log.Content().blocks.front().antenna, "Beam 235 deg, PWR 10W");
  const orvandi::NamedLog named{&log.Content(), "drive"};
  const auto samples = orvandi::CollectSamples({&named, 1});
  ASSERT_GT(samples.size(), 600U);

  const orvandi::Law law = orvandi::FitLawWithinSectors(samples, kSectorDeg);
  EXPECT_NEAR(law.exponent, 3, 0.15);
  const auto pattern = orvandi::AntennaPattern(samples, law, kSectorDeg, kEnoughRecords);
  const auto sent = SentBySector(samples, Antenna::Beam);
  std::size_t compared = 0;
  for (std::size_t i = 0; i < pattern.sectors.size(); ++i) {
    const orvandi::Sector& sector = pattern.sectors[i];
    if (!sector.shown) continue;
    ++compared;
    EXPECT_NEAR(sector.median_db, sent[i], 1.5)
        << sector.bearing_deg << " deg, " << sector.count << " records";
  }
  EXPECT_GE(compared, 18U);
}

}  // namespace
}  // namespace kestrum::end_to_end
