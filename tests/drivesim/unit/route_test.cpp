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

// Whether the car turns off within the next metres.
bool NearATurn(const Route& route, double along_m) {
  for (const double turn_m : route.TurnsM()) {
    if (std::fabs(std::fmod(along_m, route.LengthM()) - turn_m) < 60) return true;
  }
  return false;
}

double BearingDeg(Position at) {
  return std::atan2((at.long_deg - kSite.long_deg) * std::cos(kSite.lat_deg * kRad),
                    at.lat_deg - kSite.lat_deg) /
         kRad;
}

TEST(Route, IsTwoRoadsOfTwentyKilometresOnTheMap) {
  const Route route(kSite);
  double sum = 0;
  for (int m = 0; m < 40000; m += 10) sum += DistanceM(route.At(m), route.At(m + 10));
  EXPECT_NEAR(sum, 40000, 80);
  EXPECT_NEAR(route.LengthM(), 40000, 10);
  EXPECT_NEAR(route.TurnsM()[1] - route.TurnsM()[0], 20000, 10);
}

TEST(Route, IsClosed) {
  const Route route(kSite);
  const double lap = route.LengthM();
  EXPECT_LT(DistanceM(route.At(0), route.At(lap)), 0.01);
  EXPECT_LT(DistanceM(route.At(0), route.At(lap - 1)), 1.1);
  EXPECT_LT(DistanceM(route.At(500), route.At(500 + 3 * lap)), 0.01);
  EXPECT_LT(DistanceM(route.At(-500), route.At(lap - 500)), 0.01);
}

TEST(Route, TheRoadsMeetWhereTheCarTurnsOff) {
  const Route route(kSite);
  EXPECT_LT(DistanceM(route.At(route.TurnsM()[0]), route.At(route.TurnsM()[1])), 10);
}

TEST(Route, GoesAroundTheTransmitterTwice) {
  const Route route(kSite);
  double turned = 0;
  double nearest = 1e9;
  double farthest = 0;
  const double step = route.LengthM() / 2000;
  for (int i = 0; i < 2000; ++i) {
    const double m = i * step;
    const double bearing = BearingDeg(route.At(m));
    turned += std::fmod(BearingDeg(route.At(m + step)) - bearing + 540, 360) - 180;
    const double distance = DistanceM(route.At(m), kSite);
    EXPECT_NEAR(distance, route.DistanceToTransmitterM(m), distance * 0.002 + 0.5);
    EXPECT_LT(Turn(route.BearingDeg(m), bearing), 0.2);
    nearest = std::min(nearest, distance);
    farthest = std::max(farthest, distance);
  }
  EXPECT_NEAR(turned, 720, 1e-6);  // clockwise
  EXPECT_GT(nearest, 200);
  EXPECT_LT(nearest, 1000);
  EXPECT_GT(farthest, 4000);
}

// Without this a pattern could not be told from the law of the distance.
TEST(Route, SeesTheTransmitterFromEverySideAtTwoDistances) {
  const Route route(kSite);
  int alike = 0;
  for (int sector = 0; sector < 36; ++sector) {
    double nearest = 1e9;
    double farthest = 0;
    for (double m = 0; m < route.LengthM(); m += 20) {
      if (Turn(route.BearingDeg(m), sector * 10.0) > 5) continue;
      nearest = std::min(nearest, route.DistanceToTransmitterM(m));
      farthest = std::max(farthest, route.DistanceToTransmitterM(m));
    }
    if (farthest < 1.2 * nearest) ++alike;
  }
  EXPECT_LE(alike, 2);  // about where the roads cross
}

TEST(Route, HasATunnelOnTheFirstRoad) {
  const Route route(kSite);
  EXPECT_FALSE(route.InTunnel(6699));
  EXPECT_TRUE(route.InTunnel(6700));
  EXPECT_TRUE(route.InTunnel(6899 + route.LengthM()));
  EXPECT_FALSE(route.InTunnel(6900));
}

TEST(Route, HeadingPointsWhereTheCarGoesAndTurnsSmoothly) {
  const Route route(kSite);
  for (int m = 0; m < 40000; m += 5) {
    if (NearATurn(route, m)) continue;
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
  for (int m = 0; m < 40000; m += 10) {
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
  for (int m = 0; m < 40000; m += 100) {
    ASSERT_GE(route.At(m).long_deg, -180);
    ASSERT_LE(route.At(m).long_deg, 180);
  }
}

TEST(Car, DrivesOneLapInATimeThatFitsItsSpeeds) {
  const Route route(kSite);
  const Car car(route);
  EXPECT_GT(car.LapS(), 40000 / (80 / 3.6));
  EXPECT_LT(car.LapS(), 60 * 60);
  EXPECT_NEAR(car.At(0).driven_m, 0, 1e-9);
  EXPECT_NEAR(car.At(car.LapS() * 2.0 + 1e-6).driven_m, 2 * route.LengthM(), 0.1);
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
  EXPECT_EQ(stops, 7);  // five crossroads and two turns; the eighth is the start of the lap
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
