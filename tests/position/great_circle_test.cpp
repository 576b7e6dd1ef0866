#include "position/great_circle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "position/coordinates.h"

namespace kestrum {
namespace {

constexpr double kRadians = std::numbers::pi / 180;

struct Way {
  double distance_km;
  double bearing_deg;
};

// The same way by another road: half-angle formula for the distance, four-quadrant arc tangent for the
// bearing, on the same flattened sphere.
Way Independent(const Position& from, const Position& to) {
  const auto geocentric = [](double latitude) {
    return std::atan2(6356.0 * 6356.0 * std::sin(latitude * kRadians),
                      6378.0 * 6378.0 * std::cos(latitude * kRadians));
  };
  const double a = geocentric(from.latitude_deg);
  const double b = geocentric(to.latitude_deg);
  const double longitude = (to.longitude_deg - from.longitude_deg) * kRadians;
  const double half =
      std::pow(std::sin((b - a) / 2), 2) + std::cos(a) * std::cos(b) * std::pow(std::sin(longitude / 2), 2);
  const double bearing =
      std::atan2(std::sin(longitude) * std::cos(b),
                 std::cos(a) * std::sin(b) - std::sin(a) * std::cos(b) * std::cos(longitude)) /
      kRadians;
  return {2 * 6367 * std::asin(std::sqrt(half)), bearing < 0 ? bearing + 360 : bearing};
}

Way Calculated(const Position& from, const Position& to) {
  GreatCircle circle;
  circle.rx = from;
  circle.tx = to;
  circle.CalcDistBearing();
  return {circle.distance_km, circle.bearing_deg};
}

TEST(CalcDistBearing, StartsWithoutABearing) {
  const GreatCircle circle;
  EXPECT_EQ(circle.bearing_deg, -1);
  EXPECT_EQ(circle.distance_km, 0);
}

TEST(CalcDistBearing, OneMinuteToTheNorth) {
  const Way way = Calculated({LatLongToDeg("5157.00N"), LatLongToDeg("00532.00E")},
                             {LatLongToDeg("5158.00N"), LatLongToDeg("00532.00E")});
  EXPECT_EQ(way.bearing_deg, 0);
  EXPECT_NEAR(way.distance_km, 1.85, 0.01);
}

TEST(CalcDistBearing, DueSouthIs180) {
  const Way way = Calculated({51.95, 5.533333}, {51.9, 5.533333});
  EXPECT_EQ(way.bearing_deg, 180);
}

TEST(CalcDistBearing, AgreesWithAnotherFormulaOnShortWaysInAllDirections) {
  for (const double latitude : {-80.0, -51.95, -0.3, 0.2, 23.5, 51.95, 80.0}) {
    for (const double east : {-0.4, -0.05, 0.0, 0.05, 0.4}) {
      for (const double north : {-0.3, -0.04, 0.0, 0.04, 0.3}) {
        if (east == 0 && north == 0) continue;
        const Position from{latitude, 5.5};
        const Position to{latitude + north, 5.5 + east};
        const Way expected = Independent(from, to);
        const Way way = Calculated(from, to);
        EXPECT_NEAR(way.distance_km, expected.distance_km, expected.distance_km * 1e-4)
            << latitude << " " << east << " " << north;
        const double turn = std::remainder(way.bearing_deg - expected.bearing_deg, 360.0);
        EXPECT_NEAR(turn, 0, 0.06) << latitude << " " << east << " " << north;
      }
    }
  }
}

TEST(CalcDistBearing, IsAsFarThereAsBack) {
  for (const double latitude : {-89.0, -45.0, 0.0, 12.3, 51.95, 89.0}) {
    for (const double longitude : {-179.0, -5.0, 0.0, 90.0, 179.9}) {
      const Position a{51.95, 5.533333};
      const Position b{latitude, longitude};
      EXPECT_FLOAT_EQ(static_cast<float>(Calculated(a, b).distance_km),
                      static_cast<float>(Calculated(b, a).distance_km));
    }
  }
}

TEST(CalcDistBearing, LongWaysKeepTheirFormula) {
  // A quarter of the globe nearly: c = cos 80 degrees; arctan(sqrt((1 - c^2) / c)) is 67.0649 degrees,
  // not 80.
  const Way way = Calculated({0, 0}, {0, 80});
  EXPECT_NEAR(way.distance_km, 6367 * 67.06485 * kRadians, 0.01);
}

TEST(CalcDistBearing, BeyondAQuarterTurnsTheAngleRound) {
  // c = cos 100 degrees is negative: 180 - 67.0649 degrees.
  const Way way = Calculated({0, 0}, {0, 100});
  EXPECT_NEAR(way.distance_km, 6367 * 112.93515 * kRadians, 0.01);
}

TEST(CalcDistBearing, EqualPositionsLeaveBothResults) {
  GreatCircle circle;
  circle.rx = {51.95, 5.533333};
  circle.tx = {51.95, 5.6};
  circle.CalcDistBearing();
  const float distance = circle.distance_km;
  const float bearing = circle.bearing_deg;
  EXPECT_GT(distance, 4);
  for (double latitude = -90; latitude <= 90; latitude += 0.37) {
    circle.rx = {latitude, 5.533333};
    circle.tx = circle.rx;
    circle.CalcDistBearing();
    ASSERT_EQ(circle.distance_km, distance) << latitude;
    ASSERT_EQ(circle.bearing_deg, bearing) << latitude;
  }
}

TEST(CalcDistBearing, EastAndWestOfTheDateLineAreOnePlace) {
  GreatCircle circle;
  circle.rx = {10, 180};
  circle.tx = {10, -180};
  circle.CalcDistBearing();
  EXPECT_EQ(circle.distance_km, 0);
  EXPECT_EQ(circle.bearing_deg, -1);
}

TEST(CalcDistBearing, CrossesTheDateLineTheShortWay) {
  const Way way = Calculated({10, 179.9}, {10, -179.9});
  EXPECT_NEAR(way.distance_km, Independent({10, 179.9}, {10, -179.9}).distance_km, 0.01);
  EXPECT_NEAR(way.bearing_deg, 90, 0.5);
  EXPECT_NEAR(Calculated({10, -179.9}, {10, 179.9}).bearing_deg, 270, 0.5);
}

TEST(CalcDistBearing, OnTheEquatorTheDistanceIsNewAndTheBearingOld) {
  GreatCircle circle;
  circle.bearing_deg = 12.5F;
  circle.rx = {0, 5};
  circle.tx = {0, 5.1};
  circle.CalcDistBearing();
  EXPECT_NEAR(circle.distance_km, 6367 * 0.1 * kRadians, 1e-3);
  EXPECT_EQ(circle.bearing_deg, 12.5F);
}

TEST(CalcDistBearing, BearingIsRoundedToOneDecimal) {
  for (double east = 0.01; east < 0.3; east += 0.013) {
    const Way way = Calculated({51.95, 5.5}, {52.1, 5.5 + east});
    EXPECT_NEAR(way.bearing_deg * 10, std::round(way.bearing_deg * 10), 1e-3);
  }
}

TEST(CalcDistBearing, NeverLeavesTheCircleOrTheNumbers) {
  const std::vector<double> latitudes = {-90, -89.9999, -51.95, -1e-4, 0, 1e-4, 45, 90, 91, 5157, 1e30};
  const std::vector<double> longitudes = {-180, -90, -5.5, 0, 5.5, 90, 174.5, 180, 400, -1e30};
  for (const double a : latitudes) {
    for (const double b : latitudes) {
      for (const double from : longitudes) {
        for (const double to : longitudes) {
          const Way way = Calculated({a, from}, {b, to});
          ASSERT_TRUE(way.distance_km >= 0 && way.distance_km <= 6367 * std::numbers::pi + 0.01);
          ASSERT_TRUE(way.bearing_deg == -1 || (way.bearing_deg >= 0 && way.bearing_deg <= 360));
        }
      }
    }
  }
}

TEST(CalcDistBearing, AntipodesAreHalfTheGlobeAway) {
  EXPECT_NEAR(Calculated({51.95, 5.5}, {-51.95, -174.5}).distance_km, 6367 * std::numbers::pi, 1);
  EXPECT_NEAR(Calculated({90, 0}, {-90, 0}).distance_km, 6367 * std::numbers::pi, 1);
}

struct HeightRow {
  std::string tx;
  std::string rx;
  std::string expected;
};

TEST(OpticalDistanceText, FollowsTheSignsOfTheHeights) {
  const std::vector<HeightRow> rows = {
      {"10 m", "2 m", "16.3"},       // 3.568 x (3.1623 + 1.4142)
      {"2 m", "10 m", "16.3"},       //
      {"100 m", "100 m", "71.4"},    // 3.568 x 20 = 71.36
      {"-10 m", "-2 m", "16.3"},     // two negative heights count as their magnitudes
      {"0 m", "0 m", ".0"},          //
      {"0 m", "4 m", "7.1"},         // 3.568 x 2
      {"-9 m", "4 m", "7.1"},        // the one above the sea alone
      {"4 m", "0 m", "7.1"},         //
      {"4 m", "-9 m", "7.1"},        //
      {"0 m", "-9 m", ".0"},         //
      {"-9 m", "0 m", ".0"},         //
      {"0 m", "0.01 m", ".4"},       // 0.3568: no zero before the point
      {"0 m", "0.0001 m", ".0"},     //
      {"m", "4 m", "7.1"},           // no number reads as 0
      {"? m", "2 m", "??.?"},        //
      {"10 m", "?? m", "??.?"},      //
      {"32768 m", "2 m", "??.?"},    // the reader's mark for a missing number
      {"10 m", "32768 m", "657.2"},  // ...which counts on the TX side only: 3.568 x (3.1623 + 181.0193)
  };
  for (const HeightRow& row : rows) {
    EXPECT_EQ(OpticalDistanceText(row.tx, row.rx), row.expected) << row.tx << " and " << row.rx;
  }
}

TEST(CompassText, NamesTheSectorsAndTheirGaps) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"0", "N "},     {"7.4", "N "},     {"22", "N "},    {"22.5", "? "},  {"23", "? "},   {"23.9", "? "},
      {"24", "NE "},   {"67", "NE "},     {"67.5", "? "},  {"68", "E "},    {"112", "E "},  {"112.5", "? "},
      {"113", "ES "},  {"135", "ES "},    {"135.1", "S "}, {"136", "S "},   {"180", "S "},  {"180.5", "? "},
      {"181", "SW "},  {"225", "SW "},    {"226", "W "},   {"292", "W "},   {"293", "NW "}, {"337", "NW "},
      {"337.5", "? "}, {"338", "N "},     {"360", "N "},   {"360.1", "? "}, {"361", "? "},  {"-1", "? "},
      {"32768", "? "}, {"007\xB0", "N "}, {" 90", "E "},
  };
  for (const auto& [degrees, word] : rows) EXPECT_EQ(CompassText(degrees), word) << degrees;
}

struct PelorusRow {
  std::string compass;
  int bearing;
  std::string expected;
};

TEST(PelorusText, AddsCompassAndBearing) {
  const std::vector<PelorusRow> rows = {
      {"0", 0, "000"},
      {"5", 2, "007"},
      {"45", 20, "065"},
      {"350", 20, "010"},
      {"340", 20, "000"},
      {"341", 20, "001"},
      {"359", 0, "359"},
      {"700", 20, "360"},
      {"701", 20, "001"},
      {"0", 720, "360"},
      {"1000", 0, "280"},
      {"1500", 0, "780"},
      {"-5", 0, "0-5"},
      {"-100", 20, "-80"},
      {"0", -1, "0-1"},
      {"90.5", 0, "090"},
      {"91.5", 0, "092"},
      {"", 33, "033"},
      {"lblDDECompas", 33, "033"},
      {"32768", 33, "32768"},
  };
  for (const PelorusRow& row : rows) {
    EXPECT_EQ(PelorusText(row.compass, row.bearing), row.expected) << row.compass << " + " << row.bearing;
  }
}

TEST(PelorusText, TakesAnyNumber) {
  EXPECT_EQ(PelorusText(std::string(400, '9'), 10), "2147482927");
}

TEST(OpticalDistance, ATypedCommaIsAPoint) {
  EXPECT_EQ(OpticalDistanceText("12,5 m", "2 m"), OpticalDistanceText("12.5 m", "2 m"));
  EXPECT_EQ(OpticalDistanceText("12,5 m", "0 m"), "12.6");
}

}  // namespace
}  // namespace kestrum
