#include "log/geo.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace orvandi {
namespace {

constexpr double kDegree_km = kEarthRadiusKm * std::numbers::pi / 180;

TEST(Geo, DistancesOnTheSphere) {
  struct Row {
    Place from;
    Place to;
    double distance_km;
  };
  const Row rows[] = {
      {{51.95, 5.53}, {51.95, 5.53}, 0},
      {{51, 5}, {52, 5}, kDegree_km},
      {{0, 179.5}, {0, -179.5}, kDegree_km},
      {{60, 0}, {60, 0.001}, kDegree_km * 0.001 * 0.5},
      {{90, 0}, {-90, 77}, 180 * kDegree_km},
      {{0, 0}, {0, 180}, 180 * kDegree_km},
      // One metre north.
      {{51.95, 5.53}, {51.95 + 0.001 / kDegree_km, 5.53}, 0.001},
  };
  for (const Row& row : rows) {
    EXPECT_NEAR(DistanceKm(row.from, row.to), row.distance_km, 1e-6 * row.distance_km + 1e-9);
    EXPECT_DOUBLE_EQ(DistanceKm(row.from, row.to), DistanceKm(row.to, row.from));
  }
}

TEST(Geo, Bearings) {
  struct Row {
    Place from;
    Place to;
    double bearing_deg;
  };
  const Row rows[] = {
      {{51, 5}, {52, 5}, 0},
      {{0, 5}, {0, 6}, 90},
      {{51, 5}, {50, 5}, 180},
      {{0, 5}, {0, 4}, 270},
      {{0, 179.9}, {0, -179.9}, 90},
      {{51, 5}, {51, 5}, 0},
      // Amsterdam to New York sets out to the north-west.
      {{52.37, 4.9}, {40.71, -74.01}, 290.8},
  };
  for (const Row& row : rows) EXPECT_NEAR(BearingDeg(row.from, row.to), row.bearing_deg, 0.1);
}

TEST(Geo, ADestinationLiesWhereItShould) {
  for (const double latitude : {-80.0, -33.0, 0.0, 51.95, 89.0}) {
    for (double bearing = 0; bearing < 360; bearing += 15) {
      for (const double distance : {0.05, 3.0, 120.0}) {
        const Place from{latitude, 179.99};
        const Place to = Destination(from, bearing, distance);
        EXPECT_NEAR(DistanceKm(from, to), distance, 1e-9 * distance + 1e-9);
        EXPECT_NEAR(std::remainder(BearingDeg(from, to) - bearing, 360), 0, 1e-5);
        EXPECT_LE(std::fabs(to.longitude_deg), 180);
      }
    }
  }
}

}  // namespace
}  // namespace orvandi
