#include "random.h"

#include <gtest/gtest.h>

namespace kestrum::drivesim {
namespace {

TEST(Random, SameSeedSameNumbers) {
  Random a(7);
  Random b(7);
  Random other(8);
  bool differs = false;
  for (int i = 0; i < 100; ++i) {
    const double value = a.Uniform();
    EXPECT_EQ(value, b.Uniform());
    EXPECT_GE(value, 0.0);
    EXPECT_LT(value, 1.0);
    differs = differs || value != other.Uniform();
  }
  EXPECT_TRUE(differs);
}

}  // namespace
}  // namespace kestrum::drivesim
