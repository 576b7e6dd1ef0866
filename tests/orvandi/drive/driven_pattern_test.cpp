// A drive around a transmitter whose antenna is known, through the whole logger and out of its log again.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "analysis/distribution.h"
#include "analysis/law.h"
#include "analysis/pattern.h"
#include "analysis/samples.h"
#include "antenna.h"
#include "log/log_file.h"
#include "meter_scale.h"
#include "orvandi/support/log_text.h"
#include "route.h"
#include "signal_model.h"
#include "support/scripted_car.h"

namespace kestrum::test {
namespace {

using drivesim::Antenna;
using drivesim::AntennaGainDb;

constexpr double kSectorDeg = 10;
constexpr std::size_t kEnoughRecords = 20;
constexpr drivesim::Position kTransmitter{51.95, 5.533333};
constexpr std::uint64_t kLandscape = 1;
constexpr int kFullScale = 255;

std::string DegreesAndMinutes(double degrees, int width, char hemisphere) {
  const double whole = std::floor(degrees);
  char text[32];
  std::snprintf(text, sizeof text, "%0*d%07.4f%c", width, static_cast<int>(whole), (degrees - whole) * 60,
                hemisphere);
  return text;
}

// The log of one lap, a record a second.
std::string DriveLog(Antenna antenna) {
  const drivesim::Route route(kTransmitter);
  const drivesim::Car driver(route);
  const drivesim::SignalModel signal(kLandscape, route.LengthM(), antenna);
  ScriptedCar car;
  car.WriteConfig(ScriptedCar::UsualSettings());
  car.Start({.start_logging = true});
  for (int second = 0; second < driver.LapS(); ++second) {
    const drivesim::CarState state = driver.At(second);
    car.s_meter = drivesim::MeterOfLevel(signal.LevelDb(state, second), kFullScale);
    car.SendGps(DegreesAndMinutes(state.position.lat_deg, 2, 'N'),
                DegreesAndMinutes(state.position.long_deg, 3, 'E'), state.in_tunnel ? "V" : "A");
    car.RunFor(std::chrono::seconds(1));
  }
  car.form1.cmdLoggin.click();
  return car.world.files.files[car.kLogPath];
}

// What the transmitter sends into each sector, in the middle of the directions that records were made in.
std::vector<double> SentBySector(const std::vector<orvandi::Sample>& samples, Antenna antenna) {
  // The single vertical is 15 dB above S9 at 1 km, and S9 is 20.7 mV/m in the default calibration: 86.32
  // dBuV/m.
  constexpr double kVerticalAt1KmDb = 101.32;
  std::vector<std::vector<double>> levels(orvandi::SectorCount(kSectorDeg));
  for (const orvandi::Sample& sample : samples) {
    levels[orvandi::SectorOf(sample.bearing_deg, kSectorDeg)].push_back(
        kVerticalAt1KmDb + AntennaGainDb(antenna, sample.bearing_deg));
  }
  std::vector<double> sent;
  for (auto& sector : levels) sent.push_back(orvandi::Quantile(sector, 0.5));
  return sent;
}

class DrivenPattern : public testing::TestWithParam<Antenna> {};

TEST_P(DrivenPattern, IsThatOfTheTransmitter) {
  const orvandi::Folder folder;
  orvandi::LogFile log(folder.Write("drive.log", DriveLog(GetParam())));
  const auto outcome = log.Open();
  ASSERT_TRUE(outcome.ok) << outcome.sentence;
  EXPECT_TRUE(log.Content().dropped.empty());
  const orvandi::NamedLog named{&log.Content(), "drive"};
  const auto samples = orvandi::CollectSamples({&named, 1});
  ASSERT_GT(samples.size(), 1500U);

  const orvandi::Law law = orvandi::FitLawWithinSectors(samples, kSectorDeg);
  EXPECT_NEAR(law.exponent, 3, 0.15);
  const auto pattern = orvandi::AntennaPattern(samples, law, kSectorDeg, kEnoughRecords);
  const auto sent = SentBySector(samples, GetParam());
  std::size_t compared = 0;
  for (std::size_t i = 0; i < pattern.sectors.size(); ++i) {
    const orvandi::Sector& sector = pattern.sectors[i];
    if (!sector.shown) continue;
    ++compared;
    EXPECT_NEAR(sector.median_db, sent[i], 1.5)
        << sector.bearing_deg << " deg, " << sector.count << " records";
  }
  EXPECT_EQ(compared, 36U);
}

INSTANTIATE_TEST_SUITE_P(Antennas, DrivenPattern, testing::Values(Antenna::kBeam, Antenna::kVertical));

}  // namespace
}  // namespace kestrum::test
