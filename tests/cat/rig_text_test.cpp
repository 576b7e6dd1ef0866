#include "cat/rig_text.h"

#include <gtest/gtest.h>

namespace kestrum {
namespace {

TEST(RigName, OfTheFiveModels) {
  EXPECT_EQ(RigName(1), "FT817");
  EXPECT_EQ(RigName(2), "FT840");
  EXPECT_EQ(RigName(3), "FT847");
  EXPECT_EQ(RigName(4), "FT857");
  EXPECT_EQ(RigName(5), "FT897");
  for (const int odd : {-1, 0, 6}) EXPECT_EQ(RigName(odd), "") << odd;
}

TEST(ModeName, OfSixModes) {
  EXPECT_EQ(ModeName(1), "USB");
  EXPECT_EQ(ModeName(2), "LSB");
  EXPECT_EQ(ModeName(3), "CW");
  EXPECT_EQ(ModeName(4), "CWN");
  EXPECT_EQ(ModeName(5), "AM");
  EXPECT_EQ(ModeName(6), "AMN");
  for (const int odd : {-1, 0, 8}) EXPECT_EQ(ModeName(odd), "") << odd;
}

TEST(ModeName, OfFmIsEmpty) {
  EXPECT_EQ(ModeName(7), "");
  EXPECT_EQ(RigModeText(1, 7, "145500 kHz"), " FT817  145500 kHz");
}

TEST(RigModeText, JoinsWithBlanksInFront) {
  EXPECT_EQ(RigModeText(2, 2, "3630 kHz"), " FT840 LSB 3630 kHz");
  EXPECT_EQ(RigModeText(1, 4, " 7050 kHz"), " FT817 CWN  7050 kHz");
  EXPECT_EQ(RigModeText(0, 0, ""), "   ");
}

}  // namespace
}  // namespace kestrum
