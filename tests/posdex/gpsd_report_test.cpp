#include "gpsd_report.h"

#include <gtest/gtest.h>

#include "fix_tracker.h"
#include "harness.h"

namespace kestrum::posdex {
namespace {

TEST(GpsdReport, TroubleWithTheReceiver) {
  const QList<std::pair<QByteArray, QString>> rows{
      {R"({"class":"DEVICES","devices":[]})", Q("gpsd has no receiver")},
      {R"({"class":"DEVICES","devices":[{"class":"DEVICE","path":"/dev/ttyUSB0"}]})", {}},
      {R"({"class":"DEVICE","path":"/dev/ttyUSB0","activated":0})", Q("gpsd has lost its receiver")},
      {R"({"class":"DEVICE","path":"/dev/ttyUSB0","activated":1785000000.5})", {}},
      {R"({"class":"DEVICE","path":"/dev/ttyUSB0","activated":"2026-11-21T00:00:00.000Z"})", {}},
      {R"({"class":"DEVICE","path":"/dev/ttyUSB0"})", {}},
      {R"({"class":"VERSION","release":"3.22"})", {}},
      {R"({"class":7})", {}},
      {R"({"class":"DEVICES")", {}},
      {"{", {}},
      {"", {}},
  };
  for (const auto& [report, trouble] : rows)
    EXPECT_EQ(ParseGpsdReport(report).trouble, trouble) << report.toStdString();
}

// The six texts after one report; the fields are those between "mode" and the end.
TEST(GpsdReport, PositionsBecomeTheSixTexts) {
  struct Row {
    const char* fields;
    GpsTexts texts;
  };
  const auto texts = [](const char* latitude, const char* longitude, const char* validity,
                        const char* compass, const char* height, const char* speed) {
    return GpsTexts{Q(latitude), Q(longitude), Q(validity), Q(compass), Q(height), Q(speed)};
  };
  const QString no_position = Q("0000.0000N");
  const QList<Row> rows{
      {R"("mode":3,"lat":51.95,"lon":5.533333333,"altMSL":100.0,"speed":5.144,"track":45.0)",
       texts("5157.0000N", "00532.0000E", "A", "45", "328.1", "10")},
      {R"("mode":3,"lat":-33.5,"lon":-70.25,"alt":12.0,"altHAE":99.0,"speed":0.0,"track":359.97)",
       texts("3330.0000S", "07015.0000W", "A", "0", "39.4", "0")},
      {R"("mode":3,"lat":51.95,"lon":5.5,"altMSL":-1.5,"alt":7,"track":360.0)",
       texts("5157.0000N", "00530.0000E", "A", "0", "-4.9", "32768")},
      {R"("mode":2,"lat":51.95,"lon":5.5,"speed":11.523)",
       texts("5157.0000N", "00530.0000E", "A", "32768", "32768", "22.4")},
      {R"("mode":2,"lat":90,"lon":180)", texts("9000.0000N", "18000.0000E", "A", "32768", "32768", "32768")},
      {R"("mode":3,"lat":90.001,"lon":5.5)", {}},
      {R"("mode":3,"lat":51,"lon":-180.1)", {}},
      {R"("mode":3,"lat":51.95)", {}},
      {R"("mode":3,"lat":"51.95","lon":5.5)", {}},
      {R"("mode":3,"lat":null,"lon":5.5)", {}},
      {R"("mode":1,"lat":51.95,"lon":5.5)", {}},
      {R"("mode":0,"lat":51.95,"lon":5.5)", {}},
      {R"("mode":"3","lat":51.95,"lon":5.5)", {}},
      {R"("lat":51.95,"lon":5.5)", {}},
  };
  for (const Row& row : rows) {
    const GpsdReport report =
        ParseGpsdReport(QByteArray(R"({"class":"TPV","device":"/dev/a",)") + row.fields + "}");
    FixTracker tracker;
    if (report.position) tracker.Take(*report.position, 1000);
    EXPECT_EQ(TextsOf(tracker.Current()), row.texts) << row.fields;
    EXPECT_EQ(report.receiver, Q("/dev/a"));
  }
}

TEST(GpsdReport, CountsTheSatellitesInUse) {
  const QList<std::pair<QByteArray, int>> rows{
      {R"({"class":"SKY","uSat":7,"satellites":[]})", 7},
      {R"({"class":"SKY","satellites":[{"PRN":1,"used":true},{"PRN":2,"used":false},{"PRN":3,"used":true}]})",
       2},
      {R"({"class":"SKY","satellites":[7,"x",null]})", 0},
      {R"({"class":"SKY","uSat":-7})", -1},
      {R"({"class":"SKY","uSat":1e300})", -1},
      {R"({"class":"SKY","hdop":1.2})", -1},
  };
  for (const auto& [report, count] : rows)
    EXPECT_EQ(ParseGpsdReport(report).satellites.value_or(-1), count) << report.toStdString();
}

TEST(GpsdReport, AModeThatIsNotKnownIsNoLoss) {
  FixTracker tracker;
  tracker.Take(*ParseGpsdReport(R"({"class":"TPV","mode":3,"lat":51.95,"lon":5.5,"speed":5.144})").position,
               0);
  tracker.Take(*ParseGpsdReport(R"({"class":"TPV","mode":0})").position, 1000);
  EXPECT_TRUE(tracker.Current().valid);
  EXPECT_EQ(tracker.Current().type, FixType::k3D);
  tracker.Take(*ParseGpsdReport(R"({"class":"TPV","mode":1})").position, 2000);
  EXPECT_EQ(TextsOf(tracker.Current()).validity, Q("V"));
  EXPECT_EQ(TextsOf(tracker.Current()).latitude, Q("5157.0000N"));
}

TEST(GpsdReport, ANumberThatOneReportLeavesOutStandsForAWhile) {
  FixTracker tracker;
  const Fix with = *ParseGpsdReport(R"({"class":"TPV","mode":3,"lat":51,"lon":5,"altMSL":100})").position;
  const Fix without = *ParseGpsdReport(R"({"class":"TPV","mode":3,"lat":51,"lon":5})").position;
  tracker.Take(with, 0);
  tracker.Take(without, FixTracker::kLostAfterMs - 1);
  EXPECT_EQ(TextsOf(tracker.Current()).height, Q("328.1"));
  tracker.Take(without, FixTracker::kLostAfterMs);
  EXPECT_EQ(TextsOf(tracker.Current()).height, Q("32768"));
}

}  // namespace
}  // namespace kestrum::posdex
