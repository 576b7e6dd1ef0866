#include "signal_model.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kestrum::drivesim {
namespace {

TEST(SignalModel, PathLevelFallsWithDistance) {
  EXPECT_DOUBLE_EQ(SignalModel::PathLevelDb(1000), 15);
  EXPECT_DOUBLE_EQ(SignalModel::PathLevelDb(10000), -30);
  double last = SignalModel::PathLevelDb(50);
  for (int m = 60; m < 20000; m += 10) {
    ASSERT_LT(SignalModel::PathLevelDb(m), last);
    last = SignalModel::PathLevelDb(m);
  }
  EXPECT_DOUBLE_EQ(SignalModel::PathLevelDb(0), SignalModel::PathLevelDb(50));
}

TEST(SignalModel, SameSeedSameLevel) {
  const SignalModel a(42, 20000);
  const SignalModel b(42, 20000);
  const SignalModel other(43, 20000);
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
  const SignalModel model(1, 20000);
  double power = 0;
  double near = 0;
  double far = 0;
  for (int m = 0; m < 20000; m += 10) {
    power += model.ShadowDb(m) * model.ShadowDb(m);
    near += model.ShadowDb(m) * model.ShadowDb(m + 40);
    far += model.ShadowDb(m) * model.ShadowDb(m + 3000);
  }
  EXPECT_NEAR(std::sqrt(power / 2000), 5, 0.5);
  EXPECT_GT(near / power, 0.7);
  EXPECT_LT(std::fabs(far / power), 0.4);
}

TEST(SignalModel, ShadowsStayWhereTheyAreLapAfterLap) {
  const SignalModel model(1, 20000);
  EXPECT_DOUBLE_EQ(model.ShadowDb(1234), model.ShadowDb(21234));
  EXPECT_NEAR(model.ShadowDb(19999.9), model.ShadowDb(0), 0.1);
}

TEST(SignalModel, FadingIsSlowInAStandingCarAndFastInAMovingOne) {
  const SignalModel model(1, 20000);
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

TEST(SignalModel, ReadingOfALevel) {
  EXPECT_DOUBLE_EQ(SignalModel::Reading(0), 9);
  EXPECT_DOUBLE_EQ(SignalModel::Reading(-6), 8);
  EXPECT_DOUBLE_EQ(SignalModel::Reading(-54), 0);
  EXPECT_DOUBLE_EQ(SignalModel::Reading(-90), 0);
  EXPECT_DOUBLE_EQ(SignalModel::Reading(10), 10);
  EXPECT_DOUBLE_EQ(SignalModel::Reading(60), 15);
  EXPECT_DOUBLE_EQ(SignalModel::Reading(99), 15);
}

}  // namespace
}  // namespace kestrum::drivesim
