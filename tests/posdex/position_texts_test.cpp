#include "position_texts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "harness.h"

namespace kestrum::posdex {
namespace {

struct CoordinateRow {
  double degrees;
  const char* text;
};

TEST(PositionTexts, WritesLatitudes) {
  const std::vector<CoordinateRow> rows{
      {51.95, "5157.0000N"},
      {-51.95, "5157.0000S"},
      {0.0, "0000.0000N"},
      {-0.0, "0000.0000N"},
      {90.0, "9000.0000N"},
      {-90.0, "9000.0000S"},
      {5.5, "0530.0000N"},
      {48.0 + 7.038 / 60, "4807.0380N"},
      {48.0 + 59.99994 / 60, "4859.9999N"},
      // Minutes that round up to 60 carry into the degrees.
      {48.0 + 59.99996 / 60, "4900.0000N"},
      {-(48.0 + 59.99996 / 60), "4900.0000S"},
      {89.0 + 59.99996 / 60, "9000.0000N"},
      {9.0 + 59.99996 / 60, "1000.0000N"},
      // Too close to the equator to be south of it.
      {-0.00004 / 60, "0000.0000N"},
      {-0.00006 / 60, "0000.0001S"},
      {90.0001, ""},
      {-91.0, ""},
      {std::numeric_limits<double>::quiet_NaN(), ""},
      {std::numeric_limits<double>::infinity(), ""},
  };
  for (const CoordinateRow& row : rows) EXPECT_EQ(LatitudeText(row.degrees), Q(row.text)) << row.degrees;
}

TEST(PositionTexts, WritesLongitudes) {
  const std::vector<CoordinateRow> rows{
      {5.0 + 32.0 / 60, "00532.0000E"},
      {-(5.0 + 32.0 / 60), "00532.0000W"},
      {0.0, "00000.0000E"},
      {180.0, "18000.0000E"},
      {-180.0, "18000.0000W"},
      {99.0 + 59.99996 / 60, "10000.0000E"},
      {179.0 + 59.99996 / 60, "18000.0000E"},
      {-122.5, "12230.0000W"},
      {180.001, ""},
      {-std::numeric_limits<double>::infinity(), ""},
  };
  for (const CoordinateRow& row : rows) EXPECT_EQ(LongitudeText(row.degrees), Q(row.text)) << row.degrees;
}

TEST(PositionTexts, NeverShowsSixtyMinutesAndAlwaysKeepsItsShape) {
  for (double degrees = -90.0; degrees <= 90.0; degrees += 0.0137) {
    const QString text = LatitudeText(degrees);
    ASSERT_EQ(text.size(), 10) << degrees;
    ASSERT_EQ(text[4], QLatin1Char('.'));
    ASSERT_LT(text.mid(2, 2).toInt(), 60) << text.toStdString();
    const double minutes = text.left(2).toInt() * 60.0 + text.mid(2, 7).toDouble();
    ASSERT_NEAR(minutes, std::abs(degrees) * 60.0, 0.0000501) << text.toStdString();
  }
}

TEST(PositionTexts, WritesNumbers) {
  struct Row {
    std::optional<double> value;
    const char* text;
  };
  const std::vector<Row> rows{
      {std::nullopt, "32768"},
      {std::numeric_limits<double>::quiet_NaN(), "32768"},
      {-std::numeric_limits<double>::infinity(), "32768"},
      {1e30, "32768"},
      {0.0, "0"},
      {-0.0, "0"},
      {-0.04, "0"},
      {-0.06, "-0.1"},
      {10.0, "10"},
      {10.04, "10"},
      {12.3, "12.3"},
      {0.5, "0.5"},
      {-12.25, "-12.3"},
      {99.96, "100"},
      {1234567.0, "1234567"},
  };
  for (const Row& row : rows) EXPECT_EQ(NumberText(row.value), Q(row.text)) << row.value.value_or(-1);
}

TEST(PositionTexts, WritesCoursesBelow360) {
  EXPECT_EQ(CourseText(359.94), Q("359.9"));
  EXPECT_EQ(CourseText(359.96), Q("0"));
  EXPECT_EQ(CourseText(360.0), Q("0"));
  EXPECT_EQ(CourseText(0.0), Q("0"));
  EXPECT_EQ(CourseText(370.5), Q("10.5"));
  EXPECT_EQ(CourseText(720.0), Q("0"));
  EXPECT_EQ(CourseText(-90.0), Q("270"));
  EXPECT_EQ(CourseText(-0.01), Q("0"));
  EXPECT_EQ(CourseText(1e300), Q("32768"));
  EXPECT_EQ(CourseText(std::nullopt), Q("32768"));
}

TEST(PositionTexts, WritesHeightsInFeet) {
  EXPECT_EQ(HeightText(100.0), Q("328.1"));
  EXPECT_EQ(HeightText(3.048), Q("10"));
  EXPECT_EQ(HeightText(-3.0), Q("-9.8"));
  EXPECT_EQ(HeightText(0.0), Q("0"));
  EXPECT_EQ(HeightText(std::nullopt), Q("32768"));
}

TEST(PositionTexts, BeforeAnyFixThereIsNoNumberAndNoValidity) {
  const GpsTexts texts = TextsOf(Fix{});
  EXPECT_EQ(texts.latitude, Q("0000.0000N"));
  EXPECT_EQ(texts.longitude, Q("00000.0000E"));
  EXPECT_EQ(texts.validity, Q("V"));
  EXPECT_EQ(texts.compass, Q("32768"));
  EXPECT_EQ(texts.height, Q("32768"));
  EXPECT_EQ(texts.speed, Q("32768"));
}

TEST(PositionTexts, WritesAFix) {
  const GpsTexts texts = TextsOf({true, -33.5, 151.25, 30.48, 12.5, 270.0});
  EXPECT_EQ(texts.latitude, Q("3330.0000S"));
  EXPECT_EQ(texts.longitude, Q("15115.0000E"));
  EXPECT_EQ(texts.validity, Q("A"));
  EXPECT_EQ(texts.compass, Q("270"));
  EXPECT_EQ(texts.height, Q("100"));
  EXPECT_EQ(texts.speed, Q("12.5"));
}

TEST(PositionTexts, HalfAPositionIsNone) {
  EXPECT_EQ(TextsOf({true, 51.0, std::nullopt, {}, {}, {}}).latitude, Q("0000.0000N"));
  EXPECT_EQ(TextsOf({true, 95.0, 5.0, {}, {}, {}}).longitude, Q("00000.0000E"));
}

TEST(PositionTexts, NamesTheItemsOfTheLink) {
  const GpsTexts texts{Q("lat"), Q("long"), Q("val"), Q("compas"), Q("height"), Q("speed")};
  const std::vector<std::pair<const char*, const char*>> rows{
      {"lblLat1", "lat"},       {"lblLong1", "long"},     {"lblVal1", "val"},
      {"lblCompas1", "compas"}, {"lblHeight1", "height"}, {"lblSpeed1", "speed"}};
  ASSERT_EQ(kItems.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_STREQ(kItems[i].name, rows[i].first);
    EXPECT_EQ(texts.*kItems[i].text, Q(rows[i].second));
  }
}

}  // namespace
}  // namespace kestrum::posdex
