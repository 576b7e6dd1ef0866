#include "nmea.h"

#include <gtest/gtest.h>

#include <array>

namespace kestrum::drivesim {
namespace {

// 2024-05-01 12:00:00 UTC
constexpr std::int64_t kNoon = 1714564800;

CarState SomeCar() {
  CarState car;
  car.position = {51.95, 5.533333333333};
  car.speed_mps = 80 / 3.6;
  car.heading_deg = 187.26;
  car.altitude_m = 24.04;
  return car;
}

TEST(Nmea, ChecksumOfAKnownSentence) {
  // From the receivers' own manuals.
  EXPECT_EQ(NmeaSentence("GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,"),
            "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47\r\n");
  EXPECT_EQ(NmeaSentence("GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W"),
            "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A\r\n");
}

TEST(Nmea, Coordinates) {
  EXPECT_EQ(NmeaLatitude(51.95), "5157.0000,N");
  EXPECT_EQ(NmeaLatitude(-0.5), "0030.0000,S");
  EXPECT_EQ(NmeaLatitude(0), "0000.0000,N");
  EXPECT_EQ(NmeaLongitude(5.533333333333), "00532.0000,E");
  EXPECT_EQ(NmeaLongitude(-179.25), "17915.0000,W");
  EXPECT_EQ(NmeaLongitude(9.0083), "00900.4980,E");
}

TEST(Nmea, MinutesNeverRoundToSixty) {
  EXPECT_EQ(NmeaLatitude(51.99999999), "5200.0000,N");
  EXPECT_EQ(NmeaLongitude(5.9999990), "00559.9999,E");
}

// Body of a sentence after its frame and its checksum were found correct.
std::string Body(const std::string& sentence) {
  if (sentence.size() < 6 || sentence.front() != '$' || !sentence.ends_with("\r\n")) return "no sentence";
  const std::string body = sentence.substr(1, sentence.size() - 6);
  unsigned sum = 0;
  for (const char c : body) sum ^= static_cast<unsigned char>(c);
  return std::stoul(sentence.substr(sentence.size() - 4, 2), nullptr, 16) == sum ? body : "wrong checksum";
}

TEST(Nmea, RmcWithAFix) {
  EXPECT_EQ(Body(RmcSentence(SomeCar(), kNoon, true)),
            "GPRMC,120000.00,A,5157.0000,N,00532.0000,E,43.20,187.3,010524,,,A");
}

TEST(Nmea, HeadingJustBelowNorthIsNorth) {
  CarState car = SomeCar();
  car.heading_deg = 359.97;
  EXPECT_EQ(Body(RmcSentence(car, kNoon, true)),
            "GPRMC,120000.00,A,5157.0000,N,00532.0000,E,43.20,0.0,010524,,,A");
}

TEST(Nmea, RmcWithoutAFix) {
  EXPECT_EQ(Body(RmcSentence(SomeCar(), kNoon + 86399, false)), "GPRMC,115959.00,V,,,,,,,020524,,,N");
}

TEST(Nmea, GgaWithAndWithoutAFix) {
  EXPECT_EQ(Body(GgaSentence(SomeCar(), kNoon + 61, true)),
            "GPGGA,120101.00,5157.0000,N,00532.0000,E,1,09,0.9,24.0,M,45.0,M,,");
  EXPECT_EQ(Body(GgaSentence(SomeCar(), kNoon + 61, false)), "GPGGA,120101.00,,,,,0,00,99.9,,M,,M,,");
}

TEST(Nmea, GsaTellsTheKindOfFix) {
  EXPECT_EQ(Body(GsaSentence(true)), "GPGSA,A,3,02,05,07,09,13,15,20,28,30,,,,1.6,0.9,1.3");
  EXPECT_EQ(Body(GsaSentence(false)), "GPGSA,A,1,,,,,,,,,,,,,99.9,99.9,99.9");
}

TEST(Nmea, ParseUtc) {
  EXPECT_EQ(ParseUtc("2024-05-01T12:00:00Z"), kNoon);
  EXPECT_EQ(ParseUtc("2024-05-01T12:00:00"), kNoon);
  EXPECT_EQ(ParseUtc("1970-01-01T00:00:00Z"), 0);
  EXPECT_EQ(ParseUtc("2024-02-29T23:59:59Z"), 1709251199);
}

TEST(Nmea, ParseUtcRejects) {
  constexpr std::array kBad = {"",
                               "now",
                               "2024-05-01",
                               "2024-05-01 12:00:00",
                               "2023-02-29T00:00:00Z",
                               "2024-13-01T00:00:00Z",
                               "2024-05-01T24:00:00Z",
                               "2024-05-01T12:60:00Z",
                               "2024-05-01T12:00:60Z",
                               "2024-05-01T12:00:0xZ",
                               "2024-05-01T12:00:-1Z",
                               "2024-05-01T12:00:00ZZ"};
  for (const char* text : kBad) EXPECT_FALSE(ParseUtc(text).has_value()) << text;
}

}  // namespace
}  // namespace kestrum::drivesim
