#include "meter_scale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kestrum::rigbridge {
namespace {

using sets::Model;

struct Row {
  double value;
  int ft840;
  int ft817;
};

void Check(const MeterScale& scale, const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    EXPECT_EQ(MeterReading(row.value, scale, Model::kFT840), row.ft840) << row.value;
    EXPECT_EQ(MeterReading(row.value, scale, Model::kFT817), row.ft817) << row.value;
  }
}

TEST(MeterScale, PointsOfTheDefaultTable) {
  Check({}, {{-200, 0, 0},
             {-54, 0, 0},
             {-48, 1, 0},
             {-42, 2, 1},
             {-36, 8, 1},
             {-30, 18, 1},
             {-24, 32, 2},
             {-18, 50, 3},
             {-12, 72, 4},
             {-6, 98, 6},
             {0, 128, 8},
             {10, 162, 10},
             {20, 180, 11},
             {30, 198, 12},
             {40, 216, 13},
             {50, 234, 14},
             {60, 255, 15},
             {200, 255, 15}});
}

// Kestrum shows "S?" from 235 to 254.
TEST(MeterScale, NothingFallsIntoTheGapOfTheTable) {
  for (double db = 45; db <= 65; db += 0.25) {
    const int reading = MeterReading(db, {}, Model::kFT840);
    EXPECT_TRUE(reading <= 234 || reading == 255) << db;
  }
  Check({}, {{54, 234, 15}, {56, 255, 15}});
}

TEST(MeterScale, NeverFallsWhileTheSignalRises) {
  for (const Model model : {Model::kFT840, Model::kFT817}) {
    int last = 0;
    for (double db = -60; db <= 70; db += 0.1) {
      const int reading = MeterReading(db, {}, model);
      EXPECT_GE(reading, last) << db;
      last = reading;
    }
    EXPECT_EQ(last, model == Model::kFT840 ? 255 : 15);
  }
}

TEST(MeterScale, DefaultTableInDecibels) {
  struct Point {
    int raw;
    double db;
  };
  for (const Point& point : {Point{0, -54}, Point{1, -47.96}, Point{128, 0}, Point{162, 9.99}, Point{255, 60},
                             Point{113, -2.5}, Point{-5, -54}, Point{300, 60}}) {
    EXPECT_NEAR(DefaultTableDb(point.raw), point.db, 0.01) << point.raw;
  }
}

TEST(MeterScale, OffsetShifts) {
  MeterScale scale;
  scale.offset = 10;
  Check(scale, {{0, 162, 10}, {-10, 128, 8}, {50, 255, 15}});
}

TEST(MeterScale, LinearSpreadsARange) {
  MeterScale scale;
  scale.linear = LinearScale{-120, 0};
  Check(scale, {{-130, 0, 0}, {-120, 0, 0}, {-60, 128, 8}, {-30, 191, 11}, {0, 255, 15}, {3, 255, 15}});
  scale.offset = -20;
  Check(scale, {{20, 255, 15}, {-100, 0, 0}});
}

TEST(MeterScale, RawIsHandedThrough) {
  MeterScale scale;
  scale.source = MeterSource::kRaw;
  Check(scale,
        {{-3, 0, 0}, {0, 0, 0}, {15, 15, 0}, {16, 16, 1}, {117, 117, 7}, {255, 255, 15}, {999, 255, 15}});
  scale.linear = LinearScale{0, 15};
  Check(scale, {{0, 0, 0}, {9, 153, 9}, {15, 255, 15}});
}

TEST(MeterScale, WhatIsNoNumberReadsAsNothing) {
  const double infinity = std::numeric_limits<double>::infinity();
  Check({}, {{std::nan(""), 0, 0}, {infinity, 255, 15}, {-infinity, 0, 0}});
}

TEST(MeterScale, RawAsKestrumSeesIt) {
  EXPECT_EQ(RawOf(15, Model::kFT817), 240);
  EXPECT_EQ(RawOf(15, Model::kFT840), 15);
}

}  // namespace
}  // namespace kestrum::rigbridge
