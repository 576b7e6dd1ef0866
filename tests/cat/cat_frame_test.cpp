#include "cat/cat_frame.h"

#include <gtest/gtest.h>

#include <string>

#include "support/scripted_ports.h"

namespace kestrum {
namespace {

TEST(ThreeCharacters, AreCutAndPadded) {
  EXPECT_EQ(ThreeCharacters("0123").text(), "012");
  EXPECT_EQ(ThreeCharacters("01").text(), "01 ");
  EXPECT_EQ(ThreeCharacters("").text(), "   ");
  EXPECT_EQ(ThreeCharacters("043").text(), "043");
  ThreeCharacters field;
  EXPECT_EQ(field.text(), "000");
  field = "7";
  EXPECT_EQ(field.text(), "7  ");
}

struct FieldRow {
  std::string text;
  int byte;
};

TEST(FieldByte, ReadsAPairOfDigitsAsPackedBcd) {
  const FieldRow rows[] = {{"000", 0},    {"001", 1},    {"009", 9},    {"011", 0x11}, {"042", 0x42},
                           {"043", 0x43}, {"097", 0x97}, {"099", 0x99}, {"020", 0x20}};
  for (const auto& row : rows) EXPECT_EQ(FieldByte(row.text), row.byte) << row.text;
}

TEST(FieldByte, LetsTenAndAHundredStandForThemselves) {
  EXPECT_EQ(FieldByte("010"), 10);
  EXPECT_EQ(FieldByte("100"), 100);
}

TEST(FieldByte, WeighsTheFirstDigitLikeTheSecond) {
  EXPECT_EQ(FieldByte("101"), 17);
  EXPECT_EQ(FieldByte("110"), 32);
  EXPECT_EQ(FieldByte("231"), 81);
}

TEST(FieldByte, KeepsTheLowEightBitsOfWhatDoesNotFit) {
  EXPECT_EQ(FieldByte("999"), (16 * 9 + 16 * 9 + 9) - 256);
}

TEST(FieldByte, TakesWhatIsNoDigitAsZero) {
  const FieldRow rows[] = {{"0Ov", 0},
                           {"0er", 0},
                           {"   ", 0},
                           {"1", 16},
                           {"0-1", 1},
                           {"\xB0\xFF"
                            "5",
                            5}};
  for (const auto& row : rows) EXPECT_EQ(FieldByte(row.text), row.byte) << row.text;
}

TEST(FieldByte, AgreesWithPackedBcdForEveryPairButTen) {
  for (int tens = 0; tens < 10; ++tens) {
    for (int ones = 0; ones < 10; ++ones) {
      const std::string field = "0" + std::to_string(tens) + std::to_string(ones);
      EXPECT_EQ(FieldByte(field), field == "010" ? 10 : 16 * tens + ones) << field;
    }
  }
}

TEST(FrameBytes, AreInSendingOrder) {
  CatFrame frame;
  EXPECT_EQ(FrameBytes(frame), test::Bytes({0, 0, 0, 0, 0}));
  frame.P1 = "001";
  frame.P2 = "042";
  frame.P3 = "010";
  frame.P4 = "097";
  frame.Cmd = "100";
  EXPECT_EQ(FrameBytes(frame), test::Bytes({0x01, 0x42, 0x0A, 0x97, 100}));
}

}  // namespace
}  // namespace kestrum
