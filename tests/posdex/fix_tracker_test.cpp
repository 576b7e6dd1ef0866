#include "fix_tracker.h"

#include <gtest/gtest.h>

#include "harness.h"

namespace kestrum::posdex {
namespace {

constexpr const char* kRmc = "GPRMC,120000.00,A,5157.00000,N,00532.00000,E,10.0,45.0,010125,,,A";
constexpr const char* kStandingRmc = "GPRMC,120001.00,A,5157.00000,N,00532.00000,E,0.1,,010125,,,A";
constexpr const char* kLostRmc = "GPRMC,120002.00,V,,,,,,,010125,,,N";
constexpr const char* kGga = "GPGGA,120000.00,5158.00000,N,00533.00000,E,1,08,1.0,100.0,M,46.0,M,,";
constexpr const char* kFlatGga = "GPGGA,120000.00,5158.00000,N,00533.00000,E,1,03,1.0,,M,,M,,";
constexpr const char* kLostGga = "GPGGA,120000.00,,,,,0,00,,,M,,M,,";
constexpr const char* kVtg = "GPVTG,90.0,T,,M,20.0,N,37.04,K,A";

class FixTrackerTest : public testing::Test {
 protected:
  void Take(const QByteArray& body, qint64 now_ms) {
    const auto sentence = decoder_.Decode(Nmea(body));
    ASSERT_TRUE(sentence) << body.toStdString();
    tracker_.Take(*sentence, now_ms);
  }
  GpsTexts Texts() const { return TextsOf(tracker_.Current()); }

  NmeaDecoder decoder_;
  FixTracker tracker_;
};

TEST_F(FixTrackerTest, RmcAloneIsAFixWithoutHeight) {
  Take(kRmc, 0);
  EXPECT_EQ(Texts(), (GpsTexts{Q("5157.0000N"), Q("00532.0000E"), Q("A"), Q("45"), Q("32768"), Q("10")}));
}

TEST_F(FixTrackerTest, GgaAddsTheHeightAndRmcKeepsThePosition) {
  Take(kRmc, 0);
  Take(kGga, 50);
  EXPECT_EQ(Texts(), (GpsTexts{Q("5157.0000N"), Q("00532.0000E"), Q("A"), Q("45"), Q("328.1"), Q("10")}));
}

TEST_F(FixTrackerTest, GgaAloneIsAFixWithoutSpeed) {
  Take(kGga, 0);
  EXPECT_EQ(Texts(),
            (GpsTexts{Q("5158.0000N"), Q("00533.0000E"), Q("A"), Q("32768"), Q("328.1"), Q("32768")}));
}

TEST_F(FixTrackerTest, GgaDecidesAgainWhenRmcHasStopped) {
  Take(kRmc, 0);
  Take(kLostGga, 1000);
  EXPECT_EQ(Texts().validity, Q("A"));
  Take(kLostGga, FixTracker::kLostAfterMs);
  EXPECT_EQ(Texts().validity, Q("V"));
}

TEST_F(FixTrackerTest, ALostFixKeepsItsPositionAndNumbers) {
  Take(kRmc, 0);
  Take(kGga, 0);
  Take(kLostRmc, 1000);
  Take(kLostGga, 1000);
  EXPECT_EQ(Texts(), (GpsTexts{Q("5157.0000N"), Q("00532.0000E"), Q("V"), Q("45"), Q("328.1"), Q("10")}));
}

TEST_F(FixTrackerTest, ANumberThatTheSentenceLeavesOutIsMissingAtOnce) {
  Take(kRmc, 0);
  Take(kGga, 0);
  Take(kStandingRmc, 1000);
  Take(kFlatGga, 1000);
  EXPECT_EQ(Texts().compass, Q("32768"));
  EXPECT_EQ(Texts().speed, Q("0.1"));
  EXPECT_EQ(Texts().height, Q("32768"));
}

TEST_F(FixTrackerTest, AHeightThatIsNoLongerToldGoesMissing) {
  Take(kRmc, 0);
  Take(kGga, 0);
  Take(kRmc, FixTracker::kLostAfterMs - 1);
  EXPECT_EQ(Texts().height, Q("328.1"));
  Take(kRmc, FixTracker::kLostAfterMs);
  EXPECT_EQ(Texts().height, Q("32768"));
}

TEST_F(FixTrackerTest, VtgFillsInWhatRmcLeavesOut) {
  Take(kStandingRmc, 0);
  Take(kVtg, 10);
  EXPECT_EQ(Texts().compass, Q("90"));
  EXPECT_EQ(Texts().speed, Q("20"));
  Take(kStandingRmc, 1000);
  EXPECT_EQ(Texts().compass, Q("90"));
}

TEST_F(FixTrackerTest, SilenceEndsTheFix) {
  Take(kRmc, 1000);
  tracker_.Expire(1000 + FixTracker::kLostAfterMs - 1);
  EXPECT_EQ(Texts().validity, Q("A"));
  tracker_.Expire(1000 + FixTracker::kLostAfterMs);
  EXPECT_EQ(Texts().validity, Q("V"));
  EXPECT_EQ(Texts().latitude, Q("5157.0000N"));
}

TEST_F(FixTrackerTest, AnActiveStatusWithoutAPositionIsNoFix) {
  Take("GPRMC,120000.00,A,,,,,,,010125,,,A", 0);
  EXPECT_EQ(Texts(), GpsTexts{});
  Take(kRmc, 0);
  Take("GPRMC,120001.00,A,,,,,,,010125,,,A", FixTracker::kLostAfterMs - 1);
  tracker_.Expire(FixTracker::kLostAfterMs);
  EXPECT_EQ(Texts().validity, Q("V"));
}

TEST_F(FixTrackerTest, ALostSourceLosesTheFixAndANewFixRevivesIt) {
  Take(kRmc, 0);
  Take(kGga, 0);
  tracker_.Lose();
  EXPECT_EQ(Texts().validity, Q("V"));
  EXPECT_EQ(Texts().height, Q("328.1"));
  Take(kRmc, 60000);
  EXPECT_EQ(Texts().validity, Q("A"));
  EXPECT_EQ(Texts().height, Q("32768"));
}

TEST_F(FixTrackerTest, TheSouthWestIsTold) {
  Take("GPRMC,120000.00,A,3330.00000,S,07015.00000,W,0.0,359.9,010125,,,A", 0);
  EXPECT_EQ(Texts().latitude, Q("3330.0000S"));
  EXPECT_EQ(Texts().longitude, Q("07015.0000W"));
}

// A position at a time of the day; each later one lies further north.
QByteArray RmcAt(const char* time, const char* status = "A") {
  return QByteArray("GPRMC,") + time + "," + status + ",51" + QByteArray(time).mid(4, 2) +
         ".00000,N,00532.00000,E,10.0,45.0,010125,,,A";
}
QByteArray GgaAt(const char* time, const char* quality = "1") {
  return QByteArray("GPGGA,") + time + ",51" + QByteArray(time).mid(4, 2) + ".00000,N,00532.00000,E," +
         quality + ",08,1.0,100.0,M,46.0,M,,";
}

TEST_F(FixTrackerTest, TheNewestPositionCountsWhateverTellsIt) {
  Take(RmcAt("120000.00"), 0);
  Take(GgaAt("120001.00"), 1000);
  EXPECT_EQ(Texts().latitude, Q("5101.0000N"));
  Take(RmcAt("120000.50"), 1100);
  EXPECT_EQ(Texts().latitude, Q("5101.0000N")) << "a late sentence";
  Take(GgaAt("120002.00"), 2000);
  Take(RmcAt("120002.00", "V"), 2010);
  EXPECT_EQ(Texts().validity, Q("V")) << "of one time RMC has the first word";
  Take(GgaAt("120003.00"), 3000);
  EXPECT_EQ(Texts().validity, Q("A"));
  Take(GgaAt("120004.00", "0"), 4000);
  EXPECT_EQ(Texts().validity, Q("V"));
}

TEST_F(FixTrackerTest, MidnightIsNoStepBack) {
  Take(RmcAt("235959.00"), 0);
  Take(GgaAt("000000.00"), 1000);
  EXPECT_EQ(Texts().latitude, Q("5100.0000N"));
  Take(RmcAt("235959.50"), 1100);
  EXPECT_EQ(Texts().latitude, Q("5100.0000N"));
}

TEST_F(FixTrackerTest, ANewStreamMayBeAnEarlierOne) {
  Take(RmcAt("120002.00"), 0);
  tracker_.NewStream();
  Take(RmcAt("120001.00"), 100);
  EXPECT_EQ(Texts().latitude, Q("5101.0000N"));
  Take(RmcAt("110000.00"), 200);
  EXPECT_EQ(Texts().latitude, Q("5100.0000N")) << "an hour is more than late";
}

TEST_F(FixTrackerTest, ANumberThatIsToldRarelyStandsUntilItIsDueAgain) {
  for (int second = 0; second <= 10; ++second) {
    const QByteArray time = "1200" + QByteArray::number(second).rightJustified(2, '0') + ".00";
    if (second % 5 == 0) Take(RmcAt(time.constData()), second * 1000);
    Take(GgaAt(time.constData()), second * 1000 + 10);
    if (second > 5) {
      EXPECT_EQ(Texts().speed, Q("10")) << second;
    }
    EXPECT_EQ(Texts().validity, Q("A")) << second;
  }
  for (int second = 11; second <= 18; ++second) {
    Take(GgaAt(("1200" + std::to_string(second) + ".00").c_str()), second * 1000);
  }
  EXPECT_EQ(Texts().speed, Q("32768"));
}

TEST_F(FixTrackerTest, TellsKindOfFixSatellitesAndAge) {
  EXPECT_FALSE(tracker_.AgeMs(0));
  Take("GNGSA,A,3,02,05,,,,,,,,,,,1.8,1.0,1.5", 1000);
  Take("GNGSA,A,1,,,,,,,,,,,,,1.8,1.0,1.5", 1010);
  Take(kGga, 1020);
  EXPECT_EQ(tracker_.Current().type, FixType::k3D) << "the other system has none, and need not";
  EXPECT_EQ(tracker_.Current().satellites, 8);
  EXPECT_EQ(tracker_.AgeMs(1500), 480);
  Take("GNGSA,A,2,02,05,,,,,,,,,,,1.8,1.0,1.5", 3000);
  EXPECT_EQ(tracker_.Current().type, FixType::k2D);
  tracker_.Expire(1020 + FixTracker::kSatellitesLastMs);
  EXPECT_FALSE(tracker_.Current().satellites);
  EXPECT_EQ(tracker_.Current().type, FixType::kUnknown);
}

}  // namespace
}  // namespace kestrum::posdex
