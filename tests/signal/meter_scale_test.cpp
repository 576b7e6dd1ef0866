#include "signal/meter_scale.h"

#include <gtest/gtest.h>

namespace kestrum {
namespace {

TEST(MeterScale, TakesItsMarksFromTheTable) {
  const std::vector<ScaleMark> marks = MeterScale(DefaultTable(Band::kHf));
  ASSERT_EQ(marks.size(), 16U);
  EXPECT_EQ(marks.front(), (ScaleMark{0, "0"}));
  EXPECT_EQ(marks.at(9), (ScaleMark{128, "9"}));
  EXPECT_EQ(marks.at(10), (ScaleMark{162, "+10"}));
  EXPECT_EQ(marks.back(), (ScaleMark{255, "+60"}));
  EXPECT_EQ(S9Row(DefaultTable(Band::kHf)), 128);
}

TEST(MeterScale, ShowsATableOfTheBench) {
  S2FtableRows rows;
  EXPECT_TRUE(MeterScale(rows).empty());
  EXPECT_EQ(S9Row(rows), -1);
  rows[0].s = "S1";
  rows[100].s = " s9 ";
  rows[120].s = "S9+5";
  rows[130].microvolt = "60";  // no S text, no mark
  rows[140].s = "strong signal";
  EXPECT_EQ(MeterScale(rows), (std::vector<ScaleMark>{{0, "1"}, {100, "9"}, {120, "+5"}, {140, "trong"}}));
  EXPECT_EQ(S9Row(rows), 100);
}

}  // namespace
}  // namespace kestrum
