#include "meter_scale.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "sets/default_table.h"

namespace kestrum::rigbridge {
namespace {

// In dB to S9 the table above 30 MHz is the same.
using sets::kDefaultTable;
using sets::kS9Microvolt;
constexpr int kStepsOfFt817 = 16;

double ComputedDb(int raw) {
  const auto* const upper = std::find_if(kDefaultTable.begin() + 1, kDefaultTable.end(),
                                         [raw](const sets::TablePoint& point) { return point.raw >= raw; });
  const sets::TablePoint& lower = *(upper - 1);
  const double share = static_cast<double>(raw - lower.raw) / (upper->raw - lower.raw);
  const double microvolt = lower.microvolt + share * (upper->microvolt - lower.microvolt);
  return microvolt > 0 ? 20 * std::log10(microvolt / kS9Microvolt) : kLowestDb;
}

std::array<double, 256> AllDb() {
  std::array<double, 256> all{};
  for (int raw = 0; raw < 256; ++raw) all[static_cast<std::size_t>(raw)] = ComputedDb(raw);
  return all;
}

// Kestrum's default table ends in a gap: between its last two points it shows "S?". A reading there would
// hide the level, so the nearer end is told. The FT817's top step lies in the gap and is what a real one
// sends.
bool Shown(int raw, sets::Model act_as) {
  return act_as == sets::Model::kFT817 || raw <= kDefaultTable[14].raw || raw == kDefaultTable[15].raw;
}

int NearestByTable(double db, sets::Model act_as) {
  const int step = RawOf(1, act_as);
  int best = 0;
  for (int raw = 0; raw < 256; raw += step) {
    if (Shown(raw, act_as) && std::fabs(DefaultTableDb(raw) - db) < std::fabs(DefaultTableDb(best) - db)) {
      best = raw;
    }
  }
  return best / step;
}

}  // namespace

double DefaultTableDb(int raw) {
  static const std::array<double, 256> all = AllDb();
  return all[static_cast<std::size_t>(std::clamp(raw, 0, 255))];
}

int RawOf(int reading, sets::Model act_as) {
  return act_as == sets::Model::kFT817 ? reading * kStepsOfFt817 : reading;
}

int MeterReading(double value, const MeterScale& scale, sets::Model act_as) {
  const double shifted = value + scale.offset;
  if (std::isnan(shifted)) return 0;
  const int top = act_as == sets::Model::kFT817 ? kStepsOfFt817 - 1 : 255;
  if (scale.linear) {
    const double share = (shifted - scale.linear->low) / (scale.linear->high - scale.linear->low);
    return static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * top));
  }
  if (scale.source == MeterSource::kRaw) {
    return static_cast<int>(std::clamp(shifted, 0.0, 255.0)) / RawOf(1, act_as);
  }
  return NearestByTable(std::clamp(shifted, kLowestDb, kHighestDb), act_as);
}

}  // namespace kestrum::rigbridge
