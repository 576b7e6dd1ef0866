#include "meter_scale.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace kestrum::drivesim {
namespace {

// S-points of 6 dB below S9, then 10 dB each, as the default calibration has them.
TEST(MeterScale, PointsOfTheDefaultCalibration) {
  struct Row {
    double level_db;
    int raw;
  };
  constexpr std::array<Row, 13> kRows = {{{-48.1, 1},
                                          {-42.1, 2},
                                          {-36.1, 8},
                                          {-30.1, 18},
                                          {-24.1, 32},
                                          {-18.06, 50},
                                          {-12.04, 72},
                                          {-6.02, 98},
                                          {0, 128},
                                          {10, 162},
                                          {20, 180},
                                          {40, 216},
                                          {50, 234}}};
  for (const Row& row : kRows) EXPECT_EQ(std::lround(RawOfLevel(row.level_db)), row.raw) << row.level_db;
}

TEST(MeterScale, RisesAndEndsBelowTheTop) {
  double last = RawOfLevel(-120);
  EXPECT_LT(last, 0.01);
  for (double level = -119; level < 49; level += 0.5) {
    ASSERT_GT(RawOfLevel(level), last) << level;
    last = RawOfLevel(level);
  }
  // What the default calibration calls unknown is never shown.
  EXPECT_EQ(RawOfLevel(60), 234);
  EXPECT_EQ(RawOfLevel(200), 234);
}

TEST(MeterScale, OnTheScaleOfEachSet) {
  EXPECT_EQ(MeterOfLevel(0, 255), 128);
  EXPECT_EQ(MeterOfLevel(0, 31), 16);
  EXPECT_EQ(MeterOfLevel(0, 15), 8);
  EXPECT_EQ(MeterOfLevel(-200, 15), 0);
  EXPECT_EQ(MeterOfLevel(200, 15), 15);
  EXPECT_EQ(MeterOfLevel(200, 31), 29);
}

}  // namespace
}  // namespace kestrum::drivesim
