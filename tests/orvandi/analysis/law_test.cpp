#include "analysis/law.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace orvandi {
namespace {

Sample At(double distance_km, double level_db, double bearing_deg = 0) {
  Sample sample;
  sample.distance_km = static_cast<float>(distance_km);
  sample.bearing_deg = static_cast<float>(bearing_deg);
  sample.level_db = static_cast<float>(level_db);
  return sample;
}

TEST(Law, IsFoundAgain) {
  std::vector<Sample> samples;
  for (const double distance : {0.5, 1.0, 2.0, 4.0, 8.0}) {
    samples.push_back(At(distance, 70 - 31 * std::log10(distance)));
  }
  samples.push_back(At(0, 200));
  samples.push_back(At(std::nan(""), 200));
  const Law law = FitLaw(samples);
  EXPECT_EQ(law.kind, Law::Kind::kFitted);
  EXPECT_NEAR(law.exponent, 3.1, 1e-5);
  EXPECT_NEAR(law.level_at_1km_db, 70, 1e-4);
  EXPECT_NEAR(law.spread_db, 0, 1e-4);
  EXPECT_NEAR(law.LevelAt(10), 39, 1e-4);
  EXPECT_EQ(law.used, 5U);
  EXPECT_EQ(law.without_distance, 2U);
  EXPECT_FLOAT_EQ(static_cast<float>(law.nearest_km), 0.5F);
  EXPECT_FLOAT_EQ(static_cast<float>(law.farthest_km), 8);
}

TEST(Law, ToldSpreadIsThatOfTheFading) {
  std::mt19937 random(7);
  std::normal_distribution<double> fading(0, 5);
  std::uniform_real_distribution<double> log_distance(-0.5, 1.2);
  std::vector<Sample> samples;
  for (int count = 0; count < 20000; ++count) {
    const double x = log_distance(random);
    samples.push_back(At(std::pow(10, x), 60 - 25 * x + fading(random)));
  }
  const Law law = FitLaw(samples);
  EXPECT_NEAR(law.exponent, 2.5, 0.03);
  EXPECT_NEAR(law.level_at_1km_db, 60, 0.15);
  EXPECT_NEAR(law.spread_db, 5, 0.1);
}

TEST(Law, OneDistanceIsToldAsFreeSpace) {
  const Law circle =
      FitLaw(std::vector<Sample>{At(2, 50), At(2.001, 54), At(1.999, 52), At(2, 53), At(2, 51)});
  EXPECT_EQ(circle.kind, Law::Kind::kFreeSpace);
  EXPECT_DOUBLE_EQ(circle.exponent, 2);
  EXPECT_NEAR(circle.LevelAt(2), 52, 0.01);
  EXPECT_NEAR(circle.spread_db, std::sqrt(2.5), 0.01);
  const Law two = FitLaw(std::vector<Sample>{At(1, 50), At(10, 20)});
  EXPECT_EQ(two.kind, Law::Kind::kFreeSpace);
}

TEST(Law, NothingGivesNone) {
  EXPECT_EQ(FitLaw({}).kind, Law::Kind::kNone);
  EXPECT_EQ(FitLaw(std::vector<Sample>{At(0, 50)}).kind, Law::Kind::kNone);
  EXPECT_EQ(FreeSpaceThrough(0, 50).kind, Law::Kind::kNone);
}

TEST(Law, FreeSpaceThroughAPoint) {
  const Law law = FreeSpaceThrough(2, 60);
  EXPECT_NEAR(law.LevelAt(2), 60, 1e-9);
  EXPECT_NEAR(law.LevelAt(20), 40, 1e-9);
}

// A beam to the north where the road is far away: over all records the level seems to rise with distance.
TEST(Law, WithinSectorsTheAntennaDoesNotBendIt) {
  std::vector<Sample> samples;
  for (int step = 0; step < 100; ++step) {
    const double north = 5 + step * 0.05;
    const double south = 1 + step * 0.02;
    samples.push_back(At(north, 90 - 25 * std::log10(north), 3));
    samples.push_back(At(south, 55 - 25 * std::log10(south), 180));
  }
  EXPECT_LT(FitLaw(samples).exponent, 0);
  const Law law = FitLawWithinSectors(samples, 10);
  EXPECT_NEAR(law.exponent, 2.5, 1e-4);
  EXPECT_NEAR(law.spread_db, 0, 1e-3);
  // A width that does not divide the circle counts as one sector.
  EXPECT_NEAR(FitLawWithinSectors(samples, 7).exponent, FitLaw(samples).exponent, 1e-12);
}

}  // namespace
}  // namespace orvandi
