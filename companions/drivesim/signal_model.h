#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "route.h"

namespace kestrum::drivesim {

/// How strong the transmitter is heard: path loss by distance, hills and houses that stand at fixed places
/// along the route, and fading. The same seed, place and time give the same level.
class SignalModel {
 public:
  /// `lap_m`: length of the route; the shadows of the end of a lap meet those of its start.
  SignalModel(std::uint64_t seed, double lap_m);

  /// Level without shadows and fading, in dB above S9. Below 50 m it stays what it is at 50 m.
  static double PathLevelDb(double distance_m);
  /// Loss behind hills and houses at this place of the lap, dB; negative where reflections add.
  double ShadowDb(double along_m) const;
  /// dB; slow in a standing car, fast in a moving one.
  double FadingDb(double driven_m, double time_s) const;
  /// All of it, dB above S9.
  double LevelDb(const CarState& car, double time_s) const;

  /// S-meter reading of a level: 0 to 9 S-points of 6 dB, then 10 dB for each step up to 15 (S9 + 60 dB).
  static double Reading(double level_db);

 private:
  struct Wave {
    double per_m = 0;  // radians
    double per_s = 0;
    double phase = 0;
  };
  double lap_m_;
  std::vector<double> shadow_db_;
  std::array<Wave, 10> waves_;
};

}  // namespace kestrum::drivesim
