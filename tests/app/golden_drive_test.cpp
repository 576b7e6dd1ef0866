#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "support/scripted_car.h"
#include "text/text_file.h"

namespace kestrum::test {
namespace {

std::string GoldenLog() {
  std::ifstream file(KESTRUM_GOLDEN_FOLDER "/drive.log", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string Coordinate(const char* pattern, double value, char hemisphere) {
  char text[32];
  std::snprintf(text, sizeof text, pattern, value);
  return std::string(text) + hemisphere;
}

// 250 readings along a fixed track; what stands in the file was computed independently
// (golden/make_drive.py).
TEST(GoldenDrive, WritesTheLogByteForByte) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.TxHeight = "25 m";
  car.WriteConfig(settings);
  car.Start({.start_logging = true});
  for (int k = 0; k < 250; ++k) {
    car.s_meter = 1 + k * 37 % 254;
    const bool fix = k % 25 != 24;
    car.SendGps(Coordinate("%07.2f", 5150 + (k * 7 % 1000) / 100.0, 'N'),
                Coordinate("%08.2f", 528 + (k * 13 % 700) / 100.0, 'E'), fix ? "A" : "V", "100",
                std::to_string(10 + k % 50), "90");
    car.RunFor(std::chrono::milliseconds(1050));
  }
  car.form1.cmdLoggin.click();
  const auto expected = SplitLines(GoldenLog());
  ASSERT_EQ(expected.size(), 250U + 9U);
  const auto written = car.Log();
  ASSERT_EQ(written.size(), expected.size());
  for (std::size_t line = 0; line < expected.size(); ++line) {
    ASSERT_EQ(written[line], expected[line]) << "line " << line + 1;
  }
  EXPECT_EQ(car.world.files.files[car.kLogPath], GoldenLog());
}

}  // namespace
}  // namespace kestrum::test
