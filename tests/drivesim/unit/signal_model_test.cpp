#include "signal_model.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kestrum::drivesim {
namespace {

TEST(SignalModel, PathLevelFallsWithDistance) {
  EXPECT_DOUBLE_EQ(SignalModel::PathLevelDb(1000), 15);
  EXPECT_DOUBLE_EQ(SignalModel::PathLevelDb(10000), -15);
  double last = SignalModel::PathLevelDb(50);
  for (int m = 60; m < 20000; m += 10) {
    ASSERT_LT(SignalModel::PathLevelDb(m), last);
    last = SignalModel::PathLevelDb(m);
  }
  EXPECT_DOUBLE_EQ(SignalModel::PathLevelDb(0), SignalModel::PathLevelDb(50));
}

TEST(SignalModel, SameSeedSameLevel) {
  const SignalModel a(42, 40000, Antenna::kBeam);
  const SignalModel b(42, 40000, Antenna::kBeam);
  const SignalModel other(43, 40000, Antenna::kBeam);
  bool differs = false;
  for (int i = 0; i < 2000; ++i) {
    CarState car;
    car.along_m = i * 10;
    car.driven_m = i * 10;
    car.distance_m = 2000;
    ASSERT_EQ(a.LevelDb(car, i), b.LevelDb(car, i));
    differs = differs || a.LevelDb(car, i) != other.LevelDb(car, i);
  }
  EXPECT_TRUE(differs);
}

TEST(SignalModel, ShadowsAreAlikeAtNearPlacesAndUnlikeAtFarOnes) {
  const SignalModel model(1, 40000, Antenna::kVertical);
  double power = 0;
  double near = 0;
  double far = 0;
  for (int m = 0; m < 40000; m += 10) {
    power += model.ShadowDb(m) * model.ShadowDb(m);
    near += model.ShadowDb(m) * model.ShadowDb(m + 10);
    far += model.ShadowDb(m) * model.ShadowDb(m + 3000);
  }
  EXPECT_NEAR(std::sqrt(power / 4000), 0.7, 0.07);
  EXPECT_GT(near / power, 0.7);
  EXPECT_LT(std::fabs(far / power), 0.2);
}

TEST(SignalModel, ShadowsStayWhereTheyAreLapAfterLap) {
  const SignalModel model(1, 40000, Antenna::kVertical);
  EXPECT_DOUBLE_EQ(model.ShadowDb(1234), model.ShadowDb(41234));
  EXPECT_NEAR(model.ShadowDb(39999.9), model.ShadowDb(0), 0.1);
}

TEST(SignalModel, FadingIsSlowInAStandingCarAndFastInAMovingOne) {
  const SignalModel model(1, 40000, Antenna::kVertical);
  double standing = 0;
  double moving = 0;
  double largest = 0;
  for (int s = 0; s < 1000; ++s) {
    standing += std::fabs(model.FadingDb(0, s + 1) - model.FadingDb(0, s));
    moving += std::fabs(model.FadingDb((s + 1) * 20, s + 1) - model.FadingDb(s * 20, s));
    largest = std::max(largest, std::fabs(model.FadingDb(s * 20, s)));
  }
  EXPECT_LT(standing * 3, moving);
  EXPECT_LT(largest, 7);
}

TEST(SignalModel, TheBeamIsHeardByItsPatternAndTheTunnelDampsIt) {
  const SignalModel beam(1, 40000, Antenna::kBeam);
  const SignalModel vertical(1, 40000, Antenna::kVertical);
  CarState car;
  car.distance_m = 1000;
  car.bearing_deg = 235;
  EXPECT_NEAR(beam.LevelDb(car, 5) - vertical.LevelDb(car, 5), 6.99, 0.01);
  car.bearing_deg = 55;
  EXPECT_NEAR(beam.LevelDb(car, 5) - vertical.LevelDb(car, 5), -6.06, 0.01);
  const double outside = beam.LevelDb(car, 5);
  car.in_tunnel = true;
  EXPECT_NEAR(outside - beam.LevelDb(car, 5), 25, 1e-9);
}

}  // namespace
}  // namespace kestrum::drivesim
