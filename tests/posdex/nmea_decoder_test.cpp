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
      {"GNGNS,120000.00,5157.00000,N,00532.00000,E,AN,12,0.9,100.0,46.0,,,V", Sentence::Kind::kGns, true},
      {"GNGNS,120000.00,5157.00000,N,00532.00000,E,D,12,0.9,100.0,46.0,,", Sentence::Kind::kGns, true},
      {"GNGNS,120000.00,,,,,NN,00,99.9,,,,,V", Sentence::Kind::kGns, false},
      {"GNGNS,120000.00,,,,,,00,,,,,", Sentence::Kind::kGns, false},
      {"GNGSA,A,3,02,05,,,,,,,,,,,1.8,1.0,1.5", Sentence::Kind::kGsa, false},
      // Proprietary sentences, whatever their names end in.
      {"PGRMC,A,200.0,27,6378137.000,298.257223563,0.0,0.0,0.0,A,3,1,2,4,30", Sentence::Kind::kOther, false},
      {"PGRMC,120000.00,A,5157.00000,N,00532.00000,E,10.0,45.0,010125,,,A", Sentence::Kind::kOther, false},
      {"PXGGA,120000.00,5157.00000,N,00532.00000,E,1,08,1.0,100.0,M,46.0,M,,", Sentence::Kind::kOther, false},
      {"GPGSV,1,1,01,02,40,083,46", Sentence::Kind::kOther, false},
  };
  NmeaDecoder decoder;
  for (const Row& row : rows) {
    const auto sentence = decoder.Decode(Nmea(row.body));
    ASSERT_TRUE(sentence) << row.body;
    EXPECT_EQ(sentence->kind, row.kind) << row.body;
    EXPECT_EQ(sentence->has_fix, row.has_fix) << row.body;
  }
}

TEST(NmeaDecoder, ReadsTheValuesOfAGns) {
  NmeaDecoder decoder;
  const auto sentence =
      decoder.Decode(Nmea("GNGNS,120000.50,5157.00000,S,00532.00000,W,AA,12,0.9,100.5,46.0,,,V"));
  ASSERT_TRUE(sentence);
  EXPECT_NEAR(sentence->info.coordinate().latitude(), -51.95, 1e-9);
  EXPECT_NEAR(sentence->info.coordinate().longitude(), -(5 + 32.0 / 60), 1e-9);
  EXPECT_DOUBLE_EQ(sentence->info.coordinate().altitude(), 100.5);
  EXPECT_EQ(sentence->satellites, 12);
  EXPECT_EQ(sentence->time_ms, 43200500);
  EXPECT_EQ(sentence->info.timestamp().time(), QTime(12, 0, 0, 500));
}

TEST(NmeaDecoder, ReadsTheTimeOfAPosition) {
  const std::vector<std::pair<const char*, std::optional<int>>> rows{{"000000", 0},
                                                                     {"120000.1", 43200100},
                                                                     {"235959.999", 86399999},
                                                                     {"235960.5", 86400500},
                                                                     {"1200", std::nullopt},
                                                                     {"", std::nullopt},
                                                                     {"240000", std::nullopt},
                                                                     {"126000", std::nullopt},
                                                                     {"12000x", std::nullopt},
                                                                     {"1200001", std::nullopt}};
  for (const auto& [time, expected] : rows) {
    NmeaDecoder decoder;
    const auto rmc = decoder.Decode(
        Nmea(QByteArray("GPRMC,") + time + ",A,5157.00000,N,00532.00000,E,10.0,45.0,010125,,,A"));
    ASSERT_TRUE(rmc) << time;
    EXPECT_EQ(rmc->time_ms, expected) << time;
    const auto gll = decoder.Decode(Nmea(QByteArray("GPGLL,5157.00000,N,00532.00000,E,") + time + ",A,A"));
    ASSERT_TRUE(gll) << time;
    EXPECT_EQ(gll->time_ms, expected) << time;
  }
}

TEST(NmeaDecoder, SentencesWithoutChecksumCountUntilOneHasACheckSum) {
  NmeaDecoder decoder;
  const QByteArray bare = QByteArray("$") + kRmc;
  EXPECT_TRUE(decoder.Decode(bare));
  EXPECT_TRUE(decoder.Decode(bare + "\r"));
  EXPECT_FALSE(decoder.Decode(bare + "*00")) << "a wrong checksum is worse than none";
  EXPECT_TRUE(decoder.Decode(bare));
  EXPECT_TRUE(decoder.Decode(Nmea("GPGSV,1,1,01,02,40,083,46")));
  EXPECT_FALSE(decoder.Decode(bare)) << "its checksum has been lost";
  decoder.NewStream();
  EXPECT_TRUE(decoder.Decode(bare));
}

TEST(NmeaDecoder, ASentenceWithoutChecksumHasToBeComplete) {
  const std::vector<std::pair<QByteArray, bool>> rows{
      {"$GPRMC,120000.00,A,5157.00000,N,00532.00000,E,10.0,45.0,", true},
      {"$GPRMC,120000.00,A,5157.00000,N,00532.00000,E,10.0,4", false},
      {"$GPGGA,120000.00,5157.00000,N,00532.00000,E,1,08,1.0,100.0,M", true},
      {"$GPGGA,120000.00,5157.00000,N,00532.00000,E,1,08,1.0,10", false},
      {"$GPGLL,5157.00000,N,00532.00000,E,120000.00,A", true},
      {"$GPGLL,5157.00000,N,00532.00000,E,1200", false},
      {"$GPVTG,45.0,T,,M,10.0,N,18.5,K", true},
      {"$GPVTG,45.0,T,,M,10.0,N,18", false},
      {"$GNGNS,120000.00,5157.00000,N,00532.00000,E,AN,12,0.9,100.0,46.0", true},
      {"$GNGNS,120000.00,5157.00000,N,00532.00000,E,AN,12,0.9,10", false},
      {"$PGRMC,120000.00,A,5157.00000,N,00532.00000,E,10.0,45.0,010125", false},
      {"$GPGSV,1,1,01,02,40,083,46", false}};
  for (const auto& [line, counts] : rows) {
    NmeaDecoder decoder;
    EXPECT_EQ(decoder.Decode(line).has_value(), counts) << line.toStdString();
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
