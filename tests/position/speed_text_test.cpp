#include "position/speed_text.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrum {
namespace {

TEST(SpeedText, TellsTenKnotsInFourUnits) {
  EXPECT_EQ(SpeedText("10"), " 10 knots, 18.5 km, 5.1 m/s, and  11.5 mph ");
}

TEST(SpeedText, TellsAStandingCar) {
  EXPECT_EQ(SpeedText("0"), " 0 knots, 0 km, 0 m/s, and  0 mph ");
}

TEST(SpeedText, HasNoZeroBeforeThePoint) {
  EXPECT_EQ(SpeedText("1"), " 1 knots, 1.9 km, .5 m/s, and  1.2 mph ");
}

TEST(SpeedText, ReadsWhatIsNoNumberAsZero) {
  EXPECT_EQ(SpeedText("lblDDESpeed"), " 0 knots, 0 km, 0 m/s, and  0 mph ");
  EXPECT_EQ(SpeedText(""), " 0 knots, 0 km, 0 m/s, and  0 mph ");
}

TEST(SpeedText, RoundsHalvesToTheEvenNeighbour) {
  // 0.25 and 0.75 are exact halves of a tenth; 0.463 km/h, 0.1286 m/s, 0.2878 mph.
  EXPECT_EQ(SpeedText("0.25"), " .2 knots, .5 km, .1 m/s, and  .3 mph ");
  EXPECT_EQ(SpeedText("0.75"), " .8 knots, 1.4 km, .4 m/s, and  .9 mph ");
}

TEST(SpeedText, KeepsTheSignInItsPlace) {
  EXPECT_EQ(SpeedText("-10"), "-10 knots,-18.5 km,-5.1 m/s, and -11.5 mph ");
}

TEST(SpeedText, WritesEnormousSpeedsWithoutAnExponent) {
  EXPECT_EQ(SpeedText(std::string(400, '9')).find('e'), std::string::npos);
}

TEST(SpeedText, KeepsItsFactorsExactAtHighSpeeds) {
  EXPECT_EQ(SpeedText("100"), " 100 knots, 185.2 km, 51.4 m/s, and  115.1 mph ");
  EXPECT_EQ(SpeedText("1000"), " 1000 knots, 1852 km, 514.4 m/s, and  1151 mph ");
  EXPECT_EQ(SpeedText("20000"), " 20000 knots, 37040 km, 10288.9 m/s, and  23020.5 mph ");
}

}  // namespace
}  // namespace kestrum
