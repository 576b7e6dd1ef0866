#include "nmea_decoder.h"

#include <gtest/gtest.h>

#include <QGeoCoordinate>
#include <random>
#include <vector>

#include "harness.h"

namespace kestrum::posdex {
namespace {

constexpr const char* kRmc = "GPRMC,120000.00,A,5157.00000,N,00532.00000,W,10.0,45.0,010125,,,A";

TEST(NmeaDecoder, ReadsAPositionWithItsStatus) {
  NmeaDecoder decoder;
  const auto sentence = decoder.Decode(Nmea(kRmc));
  ASSERT_TRUE(sentence);
  EXPECT_EQ(sentence->kind, Sentence::Kind::kRmc);
  EXPECT_TRUE(sentence->has_fix);
  EXPECT_NEAR(sentence->info.coordinate().latitude(), 51.95, 1e-9);
  EXPECT_NEAR(sentence->info.coordinate().longitude(), -(5 + 32.0 / 60), 1e-9);
  EXPECT_EQ(sentence->info.timestamp().time(), QTime(12, 0, 0));
}

TEST(NmeaDecoder, KnowsTheKindsOfAllTalkers) {
  struct Row {
    const char* body;
    Sentence::Kind kind;
    bool has_fix;
  };
  const std::vector<Row> rows{
      {"GNRMC,120000.00,V,,,,,,,010125,,,N", Sentence::Kind::kRmc, false},
      {"GNGGA,120000.00,5157.00000,N,00532.00000,E,1,08,1.0,100.0,M,46.0,M,,", Sentence::Kind::kGga, true},
      {"GPGGA,120000.00,,,,,0,00,,,M,,M,,", Sentence::Kind::kGga, false},
      {"GLGLL,5157.00000,N,00532.00000,E,120000.00,A,A", Sentence::Kind::kGll, true},
      {"GPVTG,45.0,T,,M,10.0,N,18.5,K,A", Sentence::Kind::kVtg, false},
  };
  NmeaDecoder decoder;
  for (const Row& row : rows) {
    const auto sentence = decoder.Decode(Nmea(row.body));
    ASSERT_TRUE(sentence) << row.body;
    EXPECT_EQ(sentence->kind, row.kind) << row.body;
    EXPECT_EQ(sentence->has_fix, row.has_fix) << row.body;
  }
}

TEST(NmeaDecoder, IgnoresWhatStandsBeforeTheLastSentence) {
  NmeaDecoder decoder;
  EXPECT_TRUE(decoder.Decode("$GPRMC,1200\xFF\x01" + Nmea(kRmc)));
}

TEST(NmeaDecoder, RefusesDamagedSentences) {
  const QByteArray good = Nmea(kRmc);
  QByteArray flipped = good;
  flipped[20] = '9';
  const std::vector<QByteArray> rows{"",
                                     "$",
                                     "$GPRMC",
                                     "$*00",
                                     "$GPRMC,*",
                                     "no sentence",
                                     good.left(30),
                                     flipped,
                                     good.mid(1),
                                     good.chopped(4),
                                     "$GPRMC,120000.00,A,5157.0,N,532.0,E",
                                     QByteArray(300, '$'),
                                     "$GPRMC" + QByteArray(400, ',') + "*4B",
                                     QByteArray(20, '\0')};
  NmeaDecoder decoder;
  for (const QByteArray& row : rows) EXPECT_FALSE(decoder.Decode(row)) << row.toStdString();
}

TEST(NmeaDecoder, SurvivesAnyBytes) {
  std::mt19937 random(7);  // NOLINT(bugprone-random-generator-seed,cert-msc51-cpp): must repeat
  NmeaDecoder decoder;
  int understood = 0;
  for (int round = 0; round < 20000; ++round) {
    QByteArray body = kRmc;
    for (int change = 0; change < 3; ++change) {
      body[static_cast<qsizetype>(random() % static_cast<unsigned>(body.size()))] =
          static_cast<char>(random());
    }
    if (decoder.Decode(Nmea(body))) ++understood;
    body.truncate(static_cast<qsizetype>(random() % 60));
    decoder.Decode(Nmea(body));
  }
  EXPECT_GT(understood, 1000);
}

}  // namespace
}  // namespace kestrum::posdex
