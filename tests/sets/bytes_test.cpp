#include "sets/bytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrum::sets {
namespace {

using testing::ElementsAre;

TEST(Bytes, HexTextIsUpperCaseWithBlanksBetween) {
  EXPECT_EQ(HexText(Bytes{0x00, 0x42, 0xE7}), "00 42 E7");
  EXPECT_EQ(HexText(Bytes{}), "");
}

TEST(Bytes, PackedBcdReadsMostSignificantFirst) {
  EXPECT_EQ(BcdToNumber(Bytes{0x01, 0x42, 0x00, 0x00}), 1420000U);
  EXPECT_EQ(BcdToNumber(Bytes{0x43, 0x97, 0x00, 0x05}), 43970005U);
  EXPECT_EQ(BcdToNumber(Bytes{}), 0U);
}

TEST(Bytes, NibbleAboveNineCountsAsItsValue) {
  // The logger sends the digit pair "10" as 0x0A; a set that multiplies and adds still hears ten.
  EXPECT_EQ(BcdToNumber(Bytes{0x01, 0x42, 0x0A, 0x00}), 1421000U);
}

TEST(Bytes, NumberToBcdFillsAndCuts) {
  EXPECT_THAT(NumberToBcd(1420000, 4), ElementsAre(0x01, 0x42, 0x00, 0x00));
  EXPECT_THAT(NumberToBcd(7, 4), ElementsAre(0x00, 0x00, 0x00, 0x07));
  EXPECT_THAT(NumberToBcd(12345, 2), ElementsAre(0x23, 0x45));
}

TEST(Bytes, BcdRoundTrip) {
  for (const std::uint32_t number : {0U, 9U, 10U, 99U, 100U, 363000U, 43970000U, 99999999U}) {
    EXPECT_EQ(BcdToNumber(NumberToBcd(number, 4)), number);
  }
}

}  // namespace
}  // namespace kestrum::sets
