#include "position/coordinates.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace kestrum {
namespace {

struct CheckRow {
  std::string typed;
  std::string kind;
  std::string expected;  // empty: rejected
};

TEST(CheckLatLong, AcceptsCompletesOrRejectsWhatIsTyped) {
  const std::vector<CheckRow> rows = {
      {"5157.00N", "LAT", "5157.00N"},
      {"5157.00N", "LONG", ""},
      {"5157.00E", "LAT", ""},
      {"00532.00E", "LONG", "00532.00E"},
      {"5157,00N", "LAT", "5157.00N"},
      {"51.57.00N", "LAT", "5157.00N"},
      {"51,57,00n", "LAT", "5157.00N"},
      {"51 57,00 n", "LAT", "5157.00N"},
      {"51\xB0 57.00' n", "LAT", "5157.00N"},
      {"-51x57.00s", "LAT", "5157.00S"},
      {"005.32.00w", "LONG", "00532.00W"},
      {"5.1.5.7N", "LAT", ""},
      {"515700N", "LAT", ""},
      {".00N", "LAT", "0000.00N"},
      {"1.00N", "LAT", "0001.00N"},
      {"12.00N", "LAT", "0012.00N"},
      {"123.00N", "LAT", "0123.00N"},
      {".00E", "LONG", "00000.00E"},
      {"1.00E", "LONG", "00001.00E"},
      {"12.00E", "LONG", "00012.00E"},
      {"532.50E", "LONG", "00532.50E"},
      {"1532.50E", "LONG", "01532.50E"},
      {"532.5E", "LONG", ""},
      {"5157.0N", "LAT", ""},
      {"5157.000N", "LAT", ""},
      {"51570.0N", "LAT", ""},
      {"005320.0E", "LONG", ""},
      {"515.700N", "LAT", ""},
      {"5160.00N", "LAT", ""},
      {"5159.99N", "LAT", "5159.99N"},
      {"00560.00E", "LONG", ""},
      {"00559.99E", "LONG", "00559.99E"},
      {"60.00N", "LAT", ""},
      {"9000.00N", "LAT", "9000.00N"},
      {"9000.01N", "LAT", ""},
      {"9059.00N", "LAT", ""},
      {"18000.00E", "LONG", "18000.00E"},
      {"18000.00W", "LONG", "18000.00W"},
      {"18000.01W", "LONG", ""},
      {"5157.00NS", "LAT", "5157.00N"},
      {"00532.00EW", "LONG", "00532.00E"},
      {"N5157.00", "LAT", ""},
      {"N5157.00S", "LAT", ""},
      {"5157.00", "LAT", ""},
      {"", "LAT", ""},
      {"   ", "LAT", ""},
      {"N", "LAT", ""},
      {".N", "LAT", ""},
      {"5157.00N", "", ""},
      {"5157.00N", "HEIGHT", ""},
      {"5157.00N", "LATITUDE", ""},
      {"5157.00N", " lat ", "5157.00N"},
      {"00532.00E", "Long", "00532.00E"},
  };
  for (const CheckRow& row : rows) {
    EXPECT_EQ(CheckLatLong(row.typed, row.kind), row.expected) << row.typed << " as " << row.kind;
  }
}

// Every text of four characters of a small alphabet before some plausible ends.
TEST(CheckLatLong, OfItsOwnResultIsItsOwnResult) {
  const std::string alphabet = "059.,NWx";
  const std::vector<std::string> tails = {"", "00N", ".00N", ".00E", ",5W", "7.00S"};
  int accepted = 0;
  for (unsigned code = 0; code < 8U * 8U * 8U * 8U; ++code) {
    std::string typed;
    for (unsigned rest = code, place = 0; place < 4; ++place, rest /= 8) typed += alphabet[rest % 8];
    for (const std::string& tail : tails) {
      for (const char* kind : {"LAT", "LONG"}) {
        const std::string once = CheckLatLong(typed + tail, kind);
        if (once.empty()) continue;
        ++accepted;
        ASSERT_EQ(CheckLatLong(once, kind), once) << typed + tail;
        ASSERT_EQ(once.size(), std::string(kind) == "LAT" ? 8U : 9U);
      }
    }
  }
  EXPECT_GT(accepted, 300);
}

struct DegreeRow {
  std::string text;
  double degrees;
};

TEST(LatLongToDeg, ReadsDegreesMinutesAndHundredths) {
  const std::vector<DegreeRow> rows = {
      {"5157.00N", 51.95},
      {"5157.00S", -51.95},
      {"00532.00E", 5.533333},
      {"00532.00W", -5.533333},
      {"5157.1299N", 51.952},      // 51 + 57/60 + 12/6000
      {"5157.12N", 51.952},        // further decimals make no difference
      {"5157.9999N", 51.9665},     // cut, not rounded
      {"0000.01N", 0.0001666667},  // the resolution
      {"4019.12N", 40.31867},      // a sum in singles would end in 66
      {"18000.00W", -180},
      {"5157.00s", 51.95},  // the reader's letters are capitals
      {"5157.00w", 51.95},
      {"5157.00", 51.95},
      {"5157.00X", 51.95},
      {"5157.5S", -51.95083},  // one decimal counts as hundredths
      {"57.00S", -0.95},
      {"7.00S", -0.1166667},
      {".50N", 0.008333334},
      {".", 0},
      {"", 0},
      {"lblDDELat", 0},
      {"515700N", 0},
      {"32768", 0},
      {"ab cd.efN", 0},
      {"ab57.00N", 0.95},
      {"-5157.00S", 0},  // a doubled sign is no number
  };
  for (const DegreeRow& row : rows) EXPECT_DOUBLE_EQ(LatLongToDeg(row.text), row.degrees) << row.text;
}

TEST(LatLongToDeg, PassesThroughASingleOfSevenDigits) {
  EXPECT_NE(LatLongToDeg("00532.00E"), 5 + 32 / 60.0);
  EXPECT_EQ(LatLongToDeg("17959.99E"), 179.9998);
}

TEST(LatLongToDeg, StaysANumberWhateverComes) {
  EXPECT_TRUE(std::isfinite(LatLongToDeg(std::string(400, '9') + ".99N")));
  EXPECT_TRUE(std::isfinite(LatLongToDeg(std::string(400, '9') + ".99S")));
}

TEST(FeetToMetres, RoundsToOneDecimalWithAZeroBeforeThePoint) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"10", "3"},       {"1.6", "0.5"},      {"-1.6", "-0.5"},     {"0", "0"},        {"", "0"},
      {"abc", "0"},      {"-0.01", "0"},      {"100", "30.5"},      {"-100", "-30.5"}, {"3281", "1000"},
      {" 12.5 ", "3.8"}, {"32768", "9987.7"}, {"lblDDESpeed", "0"}, {"1", "0.3"},      {"33", "10.1"},
  };
  for (const auto& [feet, metres] : rows) EXPECT_EQ(FeetToMetres(feet), metres) << feet;
}

TEST(HeightText, GetsItsUnitUnlessItHoldsAnM) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"25", "25 m"}, {"25m", "25m"}, {"25 M", "25 M"}, {"  25  ", "25 m"}, {"25 m ", "25 m"},
      {"", ""},       {"   ", ""},    {"?", "? m"},     {"high", "high m"}, {"some metres", "some metres"},
  };
  for (const auto& [typed, height] : rows) EXPECT_EQ(HeightText(typed), height) << typed;
}

}  // namespace
}  // namespace kestrum
