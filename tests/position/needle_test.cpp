#include "position/needle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace kestrum::test {
namespace {

using ::testing::IsEmpty;

TEST(Needle, IsTheLeadingNumberAndOnlyOneTextHasNone) {
  EXPECT_EQ(NeedleOf("032\xB0"), 32);
  EXPECT_EQ(NeedleOf("359.5"), 359.5);
  EXPECT_EQ(NeedleOf("0-5"), 0);
  EXPECT_EQ(NeedleOf(""), 0);
  EXPECT_EQ(NeedleOf("???\xB0"), 0);
  EXPECT_EQ(NeedleOf("32768"), std::nullopt);
  EXPECT_EQ(NeedleOf("32768\xB0"), std::nullopt);
  EXPECT_EQ(NeedleOf("32767"), 32767);
}

struct NeedleRow {
  std::string text;
  double x;
  double y;
};

TEST(NeedleShapes, PointsUpAtZeroAndTurnsClockwise) {
  // 2050 by 1050: the centre at (1000, 500), the reach 700 across and 350 up and down.
  const std::vector<NeedleRow> rows = {
      {"000", 1000, 150},
      {"090", 1700, 500},
      {"180", 1000, 850},
      {"270", 300, 500},
      {"360", 1000, 150},
      {"045", 1494.974747, 252.512627},
      {"045\xB0", 1494.974747, 252.512627},
      {"123\xB0", 1587.069398, 690.623662},
      {"0-1", 1000, 150},  // reads as 0
  };
  for (const NeedleRow& row : rows) {
    const auto shapes = NeedleShapes(NeedleOf(row.text), 2050, 1050);
    ASSERT_EQ(shapes.size(), 2U) << row.text;
    EXPECT_EQ(shapes[0].kind, Shape::Kind::kCircle);
    EXPECT_EQ(shapes[0].x1, 1000);
    EXPECT_EQ(shapes[0].y1, 500);
    EXPECT_DOUBLE_EQ(shapes[0].radius, 700);
    EXPECT_EQ(shapes[0].color, Color::kBlue);
    EXPECT_EQ(shapes[0].pen_width, 3);
    EXPECT_EQ(shapes[1].kind, Shape::Kind::kLine);
    EXPECT_EQ(shapes[1].x1, 1000);
    EXPECT_EQ(shapes[1].y1, 500);
    EXPECT_NEAR(shapes[1].x2, row.x, 1e-5) << row.text;
    EXPECT_NEAR(shapes[1].y2, row.y, 1e-5) << row.text;
    EXPECT_EQ(shapes[1].color, Color::kRed);
    EXPECT_EQ(shapes[1].pen_width, 3);
  }
}

TEST(NeedleShapes, WithoutAnAngleThereIsASmallRedCircle) {
  const auto shapes = NeedleShapes(std::nullopt, 2050, 1050);
  ASSERT_EQ(shapes.size(), 2U);
  EXPECT_EQ(shapes[0].kind, Shape::Kind::kCircle);
  EXPECT_DOUBLE_EQ(shapes[0].radius, 700);
  EXPECT_EQ(shapes[0].color, Color::kBlue);
  EXPECT_EQ(shapes[1].kind, Shape::Kind::kCircle);
  EXPECT_EQ(shapes[1].x1, 1000);
  EXPECT_EQ(shapes[1].y1, 500);
  EXPECT_EQ(shapes[1].radius, 30);
  EXPECT_EQ(shapes[1].color, Color::kRed);
}

TEST(NeedleShapes, StayOnTheirEllipse) {
  for (int angle = -720; angle <= 1000; angle += 7) {
    const auto shapes = NeedleShapes(angle, 2050, 1050);
    EXPECT_NEAR(std::hypot((shapes[1].x2 - 1000) / 700, (shapes[1].y2 - 500) / 350), 1, 1e-9);
  }
}

TEST(NeedleShapes, NeedAPictureThatIsLaidOut) {
  EXPECT_THAT(NeedleShapes(45, 0, 0), IsEmpty());
  EXPECT_THAT(NeedleShapes(45, 50, 1000), IsEmpty());
  EXPECT_THAT(NeedleShapes(std::nullopt, 1000, 50), IsEmpty());
}

}  // namespace
}  // namespace kestrum::test
