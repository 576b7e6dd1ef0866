#include "analysis/pattern.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace orvandi {
namespace {

TEST(Sectors, AreCentredOnTheirBearing) {
  EXPECT_EQ(SectorCount(5), 72U);
  EXPECT_EQ(SectorCount(10), 36U);
  EXPECT_EQ(SectorCount(30), 12U);
  for (const double width : {0.0, -10.0, 7.0, 361.0, std::nan("")})
    EXPECT_EQ(SectorCount(width), 0U) << width;
  struct Row {
    double bearing;
    std::size_t sector;
  };
  for (const Row& row : {Row{0, 0}, Row{4.9, 0}, Row{5, 1}, Row{355, 0}, Row{354.9, 35}, Row{359.99, 0},
                         Row{180, 18}, Row{360, 0}, Row{-1, 0}, Row{-6, 35}}) {
    EXPECT_EQ(SectorOf(row.bearing, 10), row.sector) << row.bearing;
  }
}

TEST(Pattern, ShowsOnlySectorsWithEnoughRecords) {
  Law law;
  law.kind = Law::Kind::kFitted;
  law.exponent = 2;
  std::vector<Sample> samples;
  const auto add = [&](double bearing, double distance_km, double level) {
    Sample sample;
    sample.bearing_deg = static_cast<float>(bearing);
    sample.distance_km = static_cast<float>(distance_km);
    sample.level_db = static_cast<float>(level);
    samples.push_back(sample);
  };
  for (const double level : {40.0, 41.0, 42.0, 43.0, 44.0}) add(90, 10, level);
  for (const double level : {50.0, 50.0, 50.0, 50.0}) add(180, 1, level);
  add(90, 0, 99);
  const Pattern pattern = AntennaPattern(samples, law, 30);
  ASSERT_EQ(pattern.sectors.size(), 12U);
  const Sector& east = pattern.sectors[3];
  EXPECT_TRUE(east.shown);
  EXPECT_EQ(east.count, 5U);
  EXPECT_DOUBLE_EQ(east.bearing_deg, 90);
  EXPECT_NEAR(east.median_db, 62, 1e-9);
  EXPECT_NEAR(east.lower_quartile_db, 61, 1e-9);
  EXPECT_NEAR(east.upper_quartile_db, 63, 1e-9);
  EXPECT_FALSE(pattern.sectors[6].shown);
  EXPECT_EQ(pattern.sectors[6].count, 4U);
  EXPECT_FALSE(pattern.sectors[0].shown);
  EXPECT_NEAR(pattern.strongest_db, 62, 1e-9);
  EXPECT_TRUE(AntennaPattern(samples, law, 7).sectors.empty());
}

// A cardioid with fading, driven at distances that depend on the direction: found again within 1.5 dB.
TEST(Pattern, IsFoundAgainThroughFading) {
  const auto gain_db = [](double bearing_deg) {
    return 20 * std::log10(0.15 + 0.85 * (1 + std::cos((bearing_deg - 70) * std::numbers::pi / 180)) / 2);
  };
  std::mt19937 random(42);
  std::normal_distribution<double> fading(0, 4);
  std::uniform_real_distribution<double> bearings(0, 360);
  std::uniform_real_distribution<double> shares(0.6, 2.2);
  std::vector<Sample> samples;
  for (int count = 0; count < 30000; ++count) {
    const double bearing = bearings(random);
    const double distance = shares(random) * (2.5 - 1.5 * std::cos((bearing - 70) * std::numbers::pi / 180));
    Sample sample;
    sample.bearing_deg = static_cast<float>(bearing);
    sample.distance_km = static_cast<float>(distance);
    sample.level_db = static_cast<float>(80 + gain_db(bearing) - 28 * std::log10(distance) + fading(random));
    samples.push_back(sample);
  }
  for (const double width : {5.0, 10.0}) {
    const Pattern pattern = AntennaPattern(samples, FitLawWithinSectors(samples, width), width);
    for (const Sector& sector : pattern.sectors) {
      ASSERT_GE(sector.count, 20U);
      EXPECT_NEAR(sector.median_db, 80 + gain_db(sector.bearing_deg), 1.5) << sector.bearing_deg;
    }
  }
}

}  // namespace
}  // namespace orvandi
