#pragma once

#include <optional>

#include "sets/rig.h"

namespace kestrum::rigbridge {

// What is read from the rig: dB relative to S9, or the rig's own figure as it is.
enum class MeterSource { kStrength, kRaw };

// The two values that become the ends of the meter; low < high.
struct LinearScale {
  double low = 0;
  double high = 0;
};

// How a value from the rig becomes a reading of the set that is played.
struct MeterScale {
  MeterSource source = MeterSource::kStrength;
  std::optional<LinearScale> linear;  // without it: dB by the default table, raw values as they are
  double offset = 0;                  // added to each value first
};

// S9 + 60 dB is the last point of the default table, S0 the first.
inline constexpr double kLowestDb = -54;
inline constexpr double kHighestDb = 60;

// dB relative to S9 that Kestrum's default table shows for a raw value, 0 to 255. The table has microvolts
// at 16 points and a straight line between them; raw 0 counts as S0. For 235 to 254, where Kestrum shows
// "S?", it is the line's value.
double DefaultTableDb(int raw);

// What the meter of the set tells for a value from the rig: 0 to 255 as FT840, 0 to 15 as FT817. Not a
// number reads as the lowest value.
int MeterReading(double value, const MeterScale& scale, sets::Model act_as);

// The raw value that Kestrum makes of a reading: the FT817's sixteen steps count 16 each.
int RawOf(int reading, sets::Model act_as);

}  // namespace kestrum::rigbridge
