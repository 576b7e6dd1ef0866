#include "analysis/units.h"

#include <gtest/gtest.h>

#include <cmath>

namespace orvandi {
namespace {

TEST(Units, FieldStrength) {
  EXPECT_NEAR(DbMicrovoltPerM(1), 60, 1e-12);
  EXPECT_NEAR(DbMicrovoltPerM(0.001), 0, 1e-12);
  EXPECT_NEAR(DbMicrovoltPerM(20.7), 86.319, 5e-4);
  EXPECT_NEAR(MillivoltPerM(86.319), 20.7, 1e-3);
  for (const double none : {0.0, -1.0, std::nan("")}) EXPECT_TRUE(std::isnan(DbMicrovoltPerM(none)));
}

TEST(Units, PowerAtFiftyOhm) {
  EXPECT_NEAR(DbmOfMicrovolt(50), -73.010, 5e-4);  // S9
  EXPECT_NEAR(DbmOfMicrovolt(5), -93.010, 5e-4);   // S9 above 30 MHz
  EXPECT_NEAR(DbmOfMicrovolt(223606.8), 0, 1e-6);  // 0.2236 V are a milliwatt
  EXPECT_NEAR(MicrovoltOfDbm(-73.0103), 50, 1e-4);
  for (const double none : {0.0, -1.0, std::nan("")}) EXPECT_TRUE(std::isnan(DbmOfMicrovolt(none)));
}

TEST(Units, SPoints) {
  struct Row {
    const char* text;
    double point;
  };
  for (const Row& row :
       {Row{"S0", 0}, Row{"S5", 5}, Row{"S5+", 5.5}, Row{"S9", 9}, Row{"S9 + 10dB", 9 + 10 / 6.0},
        Row{"S9 + 60dB", 19}, Row{"S9+20", 9 + 20 / 6.0}, Row{"s7", 7}}) {
    EXPECT_NEAR(SPointOfText(row.text), row.point, 1e-12) << row.text;
  }
  for (const char* text : {"", "S", "S?", "S?+", "9", "S-1", "S9x", "S9 + x", "Snan", "Sinf"}) {
    EXPECT_TRUE(std::isnan(SPointOfText(text))) << text;
  }
  EXPECT_EQ(SPointLabel(5), "S5");
  EXPECT_EQ(SPointLabel(9), "S9");
  EXPECT_EQ(SPointLabel(9 + 20 / 6.0), "S9+20");
  EXPECT_EQ(SPointLabel(std::nan("")), "");
}

TEST(Units, HaveNames) {
  EXPECT_EQ(UnitText(Unit::kDbMicrovoltPerM), "dB\xC2\xB5V/m");
  EXPECT_EQ(UnitText(Unit::kSPoint), "S");
  EXPECT_TRUE(IsLogarithmic(Unit::kDbm));
  EXPECT_FALSE(IsLogarithmic(Unit::kMicrovolt));
}

}  // namespace
}  // namespace orvandi
