#include "route.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrum::drivesim {
namespace {

constexpr Position kSite{51.95, 5.533333};
constexpr double kRad = std::numbers::pi / 180;

// By the haversine formula, not by the flat map that the route is drawn on.
double DistanceM(Position a, Position b) {
  const double lat = std::sin((b.lat_deg - a.lat_deg) * kRad / 2);
  const double longitude = std::sin((b.long_deg - a.long_deg) * kRad / 2);
  const double h =
      lat * lat + std::cos(a.lat_deg * kRad) * std::cos(b.lat_deg * kRad) * longitude * longitude;
  return 2 * 6371000 * std::asin(std::sqrt(h));
}

double Turn(double from_deg, double to_deg) {
  const double turn = std::fmod(to_deg - from_deg + 540, 360) - 180;
  return std::fabs(turn);
}

TEST(Route, IsTwentyKilometresOnTheMap) {
  const Route route(kSite);
  double sum = 0;
  for (int m = 0; m < 20000; m += 10) sum += DistanceM(route.At(m), route.At(m + 10));
  EXPECT_NEAR(sum, 20000, 40);
  EXPECT_DOUBLE_EQ(route.LengthM(), 20000);
}

TEST(Route, IsClosed) {
  const Route route(kSite);
  EXPECT_LT(DistanceM(route.At(0), route.At(20000)), 0.01);
  EXPECT_LT(DistanceM(route.At(0), route.At(19999)), 1.1);
  EXPECT_LT(DistanceM(route.At(500), route.At(60500)), 0.01);
  EXPECT_LT(DistanceM(route.At(-500), route.At(19500)), 0.01);
}

TEST(Route, GoesAroundTheTransmitter) {
  const Route route(kSite);
  double turned = 0;
  double nearest = 1e9;
  double farthest = 0;
  const auto bearing = [&](double along) {
    const Position at = route.At(along);
    return std::atan2((at.long_deg - kSite.long_deg) * std::cos(kSite.lat_deg * kRad),
                      at.lat_deg - kSite.lat_deg) /
           kRad;
  };
  for (int m = 0; m < 20000; m += 20) {
    turned += std::fmod(bearing(m + 20) - bearing(m) + 540, 360) - 180;
    const double distance = DistanceM(route.At(m), kSite);
    EXPECT_NEAR(distance, route.DistanceToTransmitterM(m), distance * 0.002 + 0.5);
    nearest = std::min(nearest, distance);
    farthest = std::max(farthest, distance);
  }
  EXPECT_NEAR(turned, 360, 1e-6);  // clockwise, once
  EXPECT_GT(nearest, 200);
  EXPECT_LT(nearest, 1000);
  EXPECT_GT(farthest, 4000);
}

TEST(Route, HeadingPointsWhereTheCarGoesAndTurnsSmoothly) {
  const Route route(kSite);
  for (int m = 0; m < 20000; m += 5) {
    const Position here = route.At(m);
    const Position ahead = route.At(m + 20);
    const double way = std::atan2((ahead.long_deg - here.long_deg) * std::cos(here.lat_deg * kRad),
                                  ahead.lat_deg - here.lat_deg) /
                       kRad;
    ASSERT_GE(route.HeadingDeg(m), 0);
    ASSERT_LT(route.HeadingDeg(m), 360);
    ASSERT_LT(Turn(route.HeadingDeg(m), way), 3) << m;
    ASSERT_LT(Turn(route.HeadingDeg(m), route.HeadingDeg(m + 5)), 1) << m;
  }
}

TEST(Route, AltitudeVariesMildly) {
  const Route route(kSite);
  double lowest = 1e9;
  double highest = 0;
  for (int m = 0; m < 20000; m += 10) {
    lowest = std::min(lowest, route.AltitudeM(m));
    highest = std::max(highest, route.AltitudeM(m));
    ASSERT_LT(std::fabs(route.AltitudeM(m + 10) - route.AltitudeM(m)), 0.2);
  }
  EXPECT_GT(lowest, 0);
  EXPECT_LT(highest, 50);
  EXPECT_GT(highest - lowest, 10);
}

TEST(Route, CrossesTheDateLine) {
  const Route route({0, 180});
  for (int m = 0; m < 20000; m += 100) {
    ASSERT_GE(route.At(m).long_deg, -180);
    ASSERT_LE(route.At(m).long_deg, 180);
  }
}

TEST(Car, DrivesOneLapInATimeThatFitsItsSpeeds) {
  const Route route(kSite);
  const Car car(route);
  EXPECT_GT(car.LapS(), 20000 / (80 / 3.6));
  EXPECT_LT(car.LapS(), 30 * 60);
  EXPECT_NEAR(car.At(0).driven_m, 0, 1e-9);
  EXPECT_NEAR(car.At(car.LapS() * 2.0 + 1e-6).driven_m, 40000, 0.1);
}

TEST(Car, KeepsToTheLimitsAndStops) {
  const Route route(kSite);
  const Car car(route);
  double fastest = 0;
  int standing = 0;
  int stops = 0;
  bool moving = false;
  for (int s = 0; s < static_cast<int>(car.LapS()); ++s) {
    const CarState state = car.At(s);
    fastest = std::max(fastest, state.speed_mps);
    if (state.speed_mps < 0.01) ++standing;
    if (moving && state.speed_mps < 0.01) ++stops;
    moving = state.speed_mps >= 0.01;
    ASSERT_GE(state.speed_mps, 0);
  }
  EXPECT_NEAR(fastest * 3.6, 80, 0.01);
  EXPECT_GT(standing, 60);
  EXPECT_EQ(stops, 4);  // the fifth is the start of the lap
}

TEST(Car, SpeedIsTheChangeOfPlaceAndHasNoJumps) {
  const Route route(kSite);
  const Car car(route);
  constexpr double kStep = 0.05;
  for (double s = 0; s < car.LapS() * 1.1; s += kStep) {
    const CarState here = car.At(s);
    const CarState next = car.At(s + kStep);
    ASSERT_GE(next.driven_m, here.driven_m - 1e-9) << s;
    ASSERT_NEAR(next.driven_m - here.driven_m, (here.speed_mps + next.speed_mps) / 2 * kStep, 0.05) << s;
    ASSERT_LT(std::fabs(next.speed_mps - here.speed_mps), 1.2 * kStep + 0.5) << s;
  }
}

}  // namespace
}  // namespace kestrum::drivesim
