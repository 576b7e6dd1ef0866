#include "meter_scale.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "sets/default_table.h"

namespace kestrum::drivesim {
namespace {

// Up to S9 + 50 dB: behind it the logger's table has a gap.
constexpr std::size_t kLast = 14;

}  // namespace

double RawOfLevel(double level_db) {
  const double microvolt = sets::kS9Microvolt * std::pow(10, level_db / 20);
  for (std::size_t i = 1; i <= kLast; ++i) {
    const sets::TablePoint& low = sets::kDefaultTable[i - 1];
    const sets::TablePoint& high = sets::kDefaultTable[i];
    if (microvolt > high.microvolt) continue;
    return low.raw + (microvolt - low.microvolt) / (high.microvolt - low.microvolt) * (high.raw - low.raw);
  }
  return sets::kDefaultTable[kLast].raw;
}

int MeterOfLevel(double level_db, int most) {
  const double step = 256.0 / (most + 1);
  return std::min(most, static_cast<int>(std::lround(RawOfLevel(level_db) / step)));
}

}  // namespace kestrum::drivesim
