#include "desktop/widgets/scheme.h"

#include <gtest/gtest.h>

namespace kestrum::test {
namespace {

constexpr LampState kStates[] = {LampState::kOff, LampState::kGood, LampState::kNote, LampState::kTrouble};

class SchemeTest : public ::testing::TestWithParam<const Scheme*> {};

TEST_P(SchemeTest, TextsAreReadable) {
  const Scheme& scheme = *GetParam();
  EXPECT_GE(Contrast(scheme.ink, scheme.ground), 4.5);
  EXPECT_GE(Contrast(scheme.quiet, scheme.ground), 4.5);
  EXPECT_GE(Contrast(scheme.ink, scheme.button), 4.5);
  EXPECT_GE(Contrast(scheme.logging_ink, scheme.logging), 4.5);
  for (const LampState state : kStates) {
    for (const bool lit : {false, true}) {
      const LampShades lamp = scheme.Lamp(state, lit);
      EXPECT_GE(Contrast(lamp.ink, lamp.ground), 4.5) << static_cast<int>(state);
      EXPECT_GE(Contrast(lamp.sign, lamp.ground), 3) << static_cast<int>(state);
      EXPECT_GE(Contrast(lamp.edge, scheme.ground), 3) << static_cast<int>(state);
    }
  }
}

TEST_P(SchemeTest, TheBarStandsOut) {
  const Scheme& scheme = *GetParam();
  EXPECT_GE(Contrast(scheme.bar, scheme.bar_ground), 3);
  EXPECT_GE(Contrast(scheme.bar, scheme.ground), 3);
  EXPECT_GE(Contrast(scheme.peak, scheme.bar_ground), 3);
}

TEST_P(SchemeTest, APaletteCarriesItsScheme) {
  EXPECT_EQ(&SchemeOf(PaletteOf(*GetParam())), GetParam());
}

TEST_P(SchemeTest, WhatIsFadedHasAThirdOfItsStrength) {
  const Scheme& scheme = *GetParam();
  const double full = Contrast(scheme.ink, scheme.ground);
  const double faded = Contrast(Faded(scheme.ink, scheme.ground), scheme.ground);
  EXPECT_LT(faded, full / 3);
  EXPECT_GT(faded, 1.3) << "but it can still be found";
}

INSTANTIATE_TEST_SUITE_P(DayAndNight, SchemeTest, ::testing::Values(&DayScheme(), &NightScheme()));

TEST(Scheme, ByDayItIsTrueBlackOnWhiteAndByNightDark) {
  EXPECT_EQ(DayScheme().ink, QColor(Qt::black));
  EXPECT_EQ(DayScheme().ground, QColor(Qt::white));
  EXPECT_EQ(NightScheme().ground, QColor(Qt::black));
  EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 0.01);
}

}  // namespace
}  // namespace kestrum::test
