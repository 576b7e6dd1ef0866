// What Kestrum wrote on a drive of the real programs, as the mapping program sees it.
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <vector>

#include "analysis/distribution.h"
#include "analysis/samples.h"
#include "antenna.h"
#include "car.h"
#include "log/log_file.h"

namespace kestrum::end_to_end {
namespace {

// What the simulated transmitter sends towards a record's place: the single vertical is 15 dB above S9 at
// 1 km, S9 is 20.7 mV/m (86.32 dBuV/m) in the default calibration, and it falls by 30 dB a decade.
double SentDb(const orvandi::Sample& sample) {
  return 101.32 - 30 * std::log10(sample.distance_km) +
         drivesim::AntennaGainDb(drivesim::Antenna::kBeam, sample.bearing_deg);
}

TEST(DrivenLog, HasTheTransmitterInIt) {
  Car car(KESTRUM_PROGRAMS);
  CarSetup setup;
  setup.antennas = {"Beam 235 deg, PWR 10W"};
  car.Configure(setup);
  // Four minutes of road in fifteen seconds. Faster, a position lies too far behind its reading.
  car.Drive("FT840", 16, {"--laps", "0.1", "--antenna", "beam"});
  const auto kestrum = car.StartKestrum({"--start-logging"});
  ASSERT_TRUE(car.WaitForArrival(std::chrono::seconds(60)));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);

  orvandi::LogFile log(car.File("RSSI-GPS.log"));
  const auto outcome = log.Open();
  ASSERT_TRUE(outcome.ok) << outcome.sentence;
  EXPECT_TRUE(log.Content().dropped.empty());
  EXPECT_EQ(log.Content().blocks.front().antenna, "Beam 235 deg, PWR 10W");
  const orvandi::NamedLog named{&log.Content(), "drive"};
  const auto samples = orvandi::CollectSamples({&named, 1});
  ASSERT_GT(samples.size(), 50U);
  std::vector<double> differences;
  for (const auto& sample : samples) differences.push_back(sample.level_db - SentDb(sample));
  // Houses and fading are in it.
  EXPECT_NEAR(orvandi::Quantile(differences, 0.5), 0, 2);
  EXPECT_GT(orvandi::Quantile(differences, 0.1), -8);
  EXPECT_LT(orvandi::Quantile(differences, 0.9), 8);
}

}  // namespace
}  // namespace kestrum::end_to_end
