#include "meter_scale.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kestrum::drivesim {
namespace {

constexpr double kMicrovoltAtS9 = 50;

struct Point {
  double raw;
  double microvolt;
};
// S0 to S9, then in steps of 10 dB to S9 + 50 dB.
constexpr std::array<Point, 15> kPoints = {{{0, 0},
                                            {1, 0.2},
                                            {2, 0.39},
                                            {8, 0.78},
                                            {18, 1.56},
                                            {32, 3.13},
                                            {50, 6.25},
                                            {72, 12.5},
                                            {98, 25},
                                            {128, 50},
                                            {162, 158},
                                            {180, 500},
                                            {198, 1580},
                                            {216, 5000},
                                            {234, 15800}}};

}  // namespace

double RawOfLevel(double level_db) {
  const double microvolt = kMicrovoltAtS9 * std::pow(10, level_db / 20);
  for (std::size_t i = 1; i < kPoints.size(); ++i) {
    const Point& low = kPoints[i - 1];
    const Point& high = kPoints[i];
    if (microvolt > high.microvolt) continue;
    return low.raw + (microvolt - low.microvolt) / (high.microvolt - low.microvolt) * (high.raw - low.raw);
  }
  return kPoints.back().raw;
}

int MeterOfLevel(double level_db, int most) {
  const double step = 256.0 / (most + 1);
  return std::min(most, static_cast<int>(std::lround(RawOfLevel(level_db) / step)));
}

}  // namespace kestrum::drivesim
