#include "antenna.h"

#include <gtest/gtest.h>

#include <array>

namespace kestrum::drivesim {
namespace {

struct Row {
  double off_deg;  // from the direction that the beam points to
  double gain_db;
};

// Worked out apart from the program: 10 log10(5 (F^2 + 0.01) / 1.01).
constexpr std::array<Row, 13> kBeam = {{{0, 6.99},
                                        {20, 6.91},
                                        {40, 5.79},
                                        {50, 4.08},
                                        {60, 0.80},
                                        {70, -5.58},
                                        {78.463, -13.05},
                                        {90, -6.06},
                                        {101.5, -4.53},
                                        {126.87, -13.05},
                                        {140, -9.03},
                                        {160, -6.25},
                                        {180, -6.06}}};

TEST(Antenna, TheBeamHasItsLobesAndNulls) {
  for (const Row& row : kBeam) {
    EXPECT_NEAR(AntennaGainDb(Antenna::kBeam, 235 + row.off_deg), row.gain_db, 0.01) << row.off_deg;
    EXPECT_NEAR(AntennaGainDb(Antenna::kBeam, 235 - row.off_deg), row.gain_db, 0.01) << -row.off_deg;
  }
}

TEST(Antenna, GoesRound) {
  for (int bearing = -360; bearing < 720; bearing += 7) {
    EXPECT_NEAR(AntennaGainDb(Antenna::kBeam, bearing), AntennaGainDb(Antenna::kBeam, bearing + 360), 1e-6);
  }
}

TEST(Antenna, TheVerticalIsTheSameInAllDirections) {
  for (int bearing = 0; bearing < 360; bearing += 5) {
    EXPECT_EQ(AntennaGainDb(Antenna::kVertical, bearing), 0);
  }
}

TEST(Antenna, Names) {
  EXPECT_EQ(AntennaOf("beam"), Antenna::kBeam);
  EXPECT_EQ(AntennaOf("vertical"), Antenna::kVertical);
  EXPECT_FALSE(AntennaOf("dish").has_value());
  EXPECT_FALSE(AntennaOf("").has_value());
}

}  // namespace
}  // namespace kestrum::drivesim
