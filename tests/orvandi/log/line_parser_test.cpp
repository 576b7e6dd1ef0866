#include "log/line_parser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

#include "support/log_text.h"

namespace orvandi {
namespace {

TEST(Coordinates, KeepAllDecimalsOfTheMinutes) {
  struct Row {
    const char* text;
    double degrees;
  };
  const Row latitudes[] = {
      {"5157.00N", 51.95},
      {"5156.0633N", 51 + 56.0633 / 60},
      {"5156.0633S", -(51 + 56.0633 / 60)},
      {"0000.00N", 0},
      {"9000.00S", -90},
      {"5159.99N", 51 + 59.99 / 60},
      {"5156,0633N", 51 + 56.0633 / 60},
      {" 5157.00N ", 51.95},
      {"5157.N", 51.95},
  };
  for (const Row& row : latitudes) {
    const auto degrees = ParseLatitude(row.text);
    ASSERT_TRUE(degrees) << row.text;
    EXPECT_NEAR(*degrees, row.degrees, 1e-12) << row.text;
  }
  EXPECT_NEAR(ParseLongitude("00535.5991E").value(), 5 + 35.5991 / 60, 1e-12);
  EXPECT_NEAR(ParseLongitude("18000.00W").value(), -180, 1e-12);
  EXPECT_NEAR(ParseLongitude("17959.9999E").value(), 179 + 59.9999 / 60, 1e-12);
}

TEST(Coordinates, AreRefusedOffTheGlobeAndWhenTheyAreNone) {
  for (const char* text : {"", "N", "9000.01N", "5160.00N", "5157.00", "5157.00E", "N5157.00", "51.57.00N",
                           "????.??N", "5a57.00N", "5157.0xN", "57.N", "lblRxLat", "5157N", "-5157.00N",
                           "555157.00N", "5157.00000000000000000000N"}) {
    EXPECT_FALSE(ParseLatitude(text)) << text;
  }
  for (const char* text : {"18000.01E", "00532.00N", "99959.00E"}) EXPECT_FALSE(ParseLongitude(text)) << text;
}

TEST(LeadingNumber, TakesPointAndComma) {
  struct Row {
    const char* text;
    double number;
  };
  for (const Row& row : {Row{"4.47 km", 4.47}, Row{".5 km", .5}, Row{"4,47 km", 4.47}, Row{"-3.2 m", -3.2},
                         Row{"223\xB0", 223}, Row{"  30.8 uV", 30.8}, Row{"1e3", 1}, Row{"12.", 12},
                         Row{"1.2.3", 1.2}, Row{"007", 7}}) {
    ASSERT_TRUE(ParseLeadingNumber(row.text)) << row.text;
    EXPECT_DOUBLE_EQ(*ParseLeadingNumber(row.text), row.number) << row.text;
  }
  for (const char* text :
       {"", "???", "?xx", "??x", "uV", "-", ".", "nan", "inf", "- 3", "+4", "99999999999999 uV"}) {
    EXPECT_FALSE(ParseLeadingNumber(text)) << text;
  }
}

// Short and long texts go different ways to their number.
TEST(LeadingNumber, IsTheOneNearestToItsText) {
  std::mt19937 random(7);
  const auto below = [&](std::uint32_t limit) { return random() % limit; };
  for (int i = 0; i < 20000; ++i) {
    std::string text = below(4) == 0 ? "-" : "";
    for (auto digits = below(12); digits > 0; --digits) text += static_cast<char>('0' + below(10));
    text += "0.";
    for (auto digits = below(20); digits > 0; --digits) text += static_cast<char>('0' + below(10));
    ASSERT_EQ(ParseLeadingNumber(text + " mV/m"), std::strtod(text.c_str(), nullptr)) << text;
  }
  EXPECT_TRUE(std::signbit(*ParseLeadingNumber("-0.0")));
}

TEST(TimeOfDay, IsCheckedOverItsWholeLength) {
  EXPECT_EQ(ParseTimeOfDay("00:00:00"), 0);
  EXPECT_EQ(ParseTimeOfDay("23:59:59"), 86399);
  EXPECT_EQ(ParseTimeOfDay("1:02:03"), 3723);
  EXPECT_EQ(ParseTimeOfDay("01.02.03"), 3723);
  for (const char* text : {"", "24:00:00", "12:60:00", "12:00:60", "12:00", "12:00:00x", "a2:00:00"}) {
    EXPECT_FALSE(ParseTimeOfDay(text)) << text;
  }
}

TEST(Lines, AreToldApartByTheirBeginning) {
  struct Row {
    std::string text;
    LineKind kind;
  };
  const Row rows[] = {
      {"", LineKind::kBlank},
      {"   \t", LineKind::kBlank},
      {std::string(40, '-'), LineKind::kDashes},
      {"---", LineKind::kOther},
      {"21-11-2026 01:55:34, 5157.00N", LineKind::kHeader},
      {"21/11/2026 01:55:34, 5157.00N", LineKind::kHeader},
      {"99-99-2026 01:55:34, 5157.00N", LineKind::kHeader},
      {"01:55:34, GPS Ok", LineKind::kRecord},
      {"25:99:34, GPS Ok", LineKind::kRecord},
      {"01:55:34", LineKind::kRecord},
      {"01:55:34 left home", LineKind::kOther},
      {"Start @11-21-26 01:55:34", LineKind::kOther},
      {"21-11-2026", LineKind::kOther},
  };
  for (const Row& row : rows) EXPECT_EQ(KindOf(row.text), row.kind) << row.text;
}

TEST(HeaderLine, IsTakenApart) {
  const auto header = ParseHeader(
      "21-11-2026 01:55:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB  3630 kHz, Antenna1, PWR 10W, up");
  ASSERT_TRUE(header);
  EXPECT_TRUE(header->complete);
  const Block& block = header->block;
  EXPECT_TRUE(block.has_header);
  EXPECT_EQ(block.time_s, 1795226134);  // date -u -d '2026-11-21 01:55:34' +%s
  EXPECT_DOUBLE_EQ(block.tx_latitude_deg, 51.95);
  EXPECT_NEAR(block.tx_longitude_deg, 5.5333333333, 1e-9);
  EXPECT_FLOAT_EQ(block.tx_height_m, 25);
  EXPECT_EQ(block.rig, "FT840");
  EXPECT_EQ(block.mode, "LSB");
  EXPECT_DOUBLE_EQ(block.frequency_khz, 3630);
  EXPECT_EQ(block.antenna, "Antenna1, PWR 10W, up");
}

TEST(HeaderLine, HoldsWhatIsThere) {
  const auto fm = ParseHeader("1-2-2003 4:05:06, 5157.00N, 00532.00E, ? m,  FT817  145500 kHz, ");
  ASSERT_TRUE(fm);
  EXPECT_EQ(fm->block.mode, "");
  EXPECT_DOUBLE_EQ(fm->block.frequency_khz, 145500);
  EXPECT_EQ(fm->block.antenna, "");
  EXPECT_TRUE(std::isnan(fm->block.tx_height_m));

  const auto comma = ParseHeader("21-11-2026 01:55:34, 5157.00N, 00532.00E, 25 m,  FT840 USB 3630,5, A");
  ASSERT_TRUE(comma);
  EXPECT_DOUBLE_EQ(comma->block.frequency_khz, 3630.5);

  const auto no_site = ParseHeader("21-11-2026 01:55:34, , 00532.00E, ,  FT840 LSB 3630, Loop \xBD wave");
  ASSERT_TRUE(no_site);
  EXPECT_FALSE(no_site->block.HasTransmitter());
  EXPECT_EQ(no_site->block.antenna, "Loop \xC2\xBD wave");

  const auto torn = ParseHeader("21-11-2026 01:55:34, 5157.00N, 005");
  ASSERT_TRUE(torn);
  EXPECT_FALSE(torn->complete);
  EXPECT_FALSE(torn->block.HasTransmitter());

  EXPECT_FALSE(ParseHeader("31-02-2026 01:55:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB 3630, A"));
  EXPECT_FALSE(ParseHeader("21-11-2026 25:55:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB 3630, A"));
}

TEST(RecordLine, IsTakenApart) {
  const auto parsed = ParseRecord(
      "01:55:31, GPS Ok, 5159.2453N, 00535.3467E, 5.65 km, 2.8 m, 223\xB0, 110, S8+, 35 uV, 14.52 mV/m");
  ASSERT_EQ(parsed.fault, RecordFault::kNone);
  const Record& record = parsed.record;
  EXPECT_EQ(record.time_s, 6931);
  EXPECT_EQ(record.marks, 0);
  EXPECT_NEAR(record.latitude_deg, 51 + 59.2453 / 60, 1e-12);
  EXPECT_NEAR(record.longitude_deg, 5 + 35.3467 / 60, 1e-12);
  EXPECT_FLOAT_EQ(record.distance_km, 5.65F);
  EXPECT_FLOAT_EQ(record.bearing_deg, 43);
  EXPECT_FLOAT_EQ(record.height_m, 2.8F);
  EXPECT_EQ(record.raw, 110);
  EXPECT_EQ(parsed.s_text, "S8+");
  EXPECT_FLOAT_EQ(record.microvolt, 35);
  EXPECT_FLOAT_EQ(record.millivolt_per_m, 14.52F);
}

TEST(RecordLine, MarksWhatIsNotKnown) {
  struct Row {
    const char* text;
    int marks;
    int raw;
  };
  const Row rows[] = {
      {"01:55:31, No GPS, 5159.2453N, 00535.3467E, 5.65 km, 2.8 m, 223\xB0, 110, S8+, 35 uV, 14.52 mV/m",
       kNoFix, 110},
      {"01:55:31, gps ok, ?, ?, ??? km, ? m, ???\xB0, 110, S8+, 35 uV, 14.52 mV/m", kNoPosition, 110},
      {"01:55:31, GPS Ok, 9959.2453N, 00535.3467E, 5.65 km, 2.8 m, 223\xB0, 9, S3, 1 uV, 1 mV/m", kNoPosition,
       9},
      {"01:55:31, GPS Ok, 5159.24N, 00535.34E, .65 km, 2.8 m, 223\xB0, 240, S?, ??? uV, ??? mV/m",
       kUnknownSignal, 240},
      {"01:55:31, GPS Ok, 5159.24N, 00535.34E, .65 km, 2.8 m, 223\xB0, 250, S9 + 50dB, 15800 uV, ??x mV/m",
       kUnknownSignal, 250},
      {"01:55:31, No GPS, , , , , , 300, S?, ??? uV, ??? mV/m", kNoFix | kNoPosition | kUnknownSignal, -1},
      {"01:55:31, GPS Ok, 5159.24N, 00535.34E, 1,65 km, 2,8 m, 223\xB0, 10, S3, 1,2 uV, 0,4 mV/m", 0, 10},
  };
  for (const Row& row : rows) {
    const auto parsed = ParseRecord(row.text);
    ASSERT_EQ(parsed.fault, RecordFault::kNone) << row.text;
    EXPECT_EQ(parsed.record.marks, row.marks) << row.text;
    EXPECT_EQ(parsed.record.raw, row.raw) << row.text;
  }
}

TEST(RecordLine, ReadsARecordWithTooManyCommasFromItsEnd) {
  const auto parsed = ParseRecord(
      "01:55:31, GPS Ok, a, b, 5159.2453N, 00535.3467E, 5.65 km, 2.8 m, 223\xB0, 110, S8+, 35 uV, 14.52 "
      "mV/m");
  ASSERT_EQ(parsed.fault, RecordFault::kNone);
  EXPECT_EQ(parsed.record.marks, 0);
  EXPECT_NEAR(parsed.record.latitude_deg, 51 + 59.2453 / 60, 1e-12);
  EXPECT_EQ(parsed.record.raw, 110);
}

TEST(RecordLine, IsTornWhereverItIsCut) {
  const std::string whole = Line({});
  ASSERT_EQ(ParseRecord(whole).fault, RecordFault::kNone);
  for (std::size_t length = 9; length < whole.size(); ++length) {
    EXPECT_EQ(ParseRecord(whole.substr(0, length)).fault, RecordFault::kTorn) << whole.substr(0, length);
  }
  EXPECT_EQ(ParseRecord("25:55:31" + whole.substr(8)).fault, RecordFault::kBadTime);
}

}  // namespace
}  // namespace orvandi
