#pragma once

#include <cstddef>
#include <span>

#include "analysis/samples.h"

namespace orvandi {

// How the level falls with distance: level(d) = level_at_1km - 10 n log10(d / 1 km), n = 2 in free space
// (ITU-R P.525: the power falls with the square of the distance, the field strength with 20 dB a decade).
struct Law {
  enum class Kind {
    kNone,       // no sample with a distance above 0
    kFreeSpace,  // the distances differ too little to say more: n = 2 through the median
    kFitted,
  };
  Kind kind = Kind::kNone;
  double level_at_1km_db = 0;
  double exponent = 2;    // n
  double spread_db = 0;   // standard deviation of the samples about the line
  double nearest_km = 0;  // of the samples used
  double farthest_km = 0;
  std::size_t used = 0;
  std::size_t without_distance = 0;  // distance unknown or 0: not used

  double LevelAt(double distance_km) const;
};

// Least squares over log10 of the distance.
Law FitLaw(std::span<const Sample> samples);
// The same with a level of its own for each sector of bearings (0 to 30 degrees wide): the exponent comes
// from how the level falls within sectors, so that an antenna that is strong where the road is near does not
// bend it. Spread is about the sectors' own lines, level_at_1km_db their mean by records.
Law FitLawWithinSectors(std::span<const Sample> samples, double sector_deg);
// n = 2 through a chosen point.
Law FreeSpaceThrough(double distance_km, double level_db);

}  // namespace orvandi
