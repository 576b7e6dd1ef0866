#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "antenna.h"
#include "route.h"

namespace kestrum::drivesim {

// How strong the transmitter is heard: its antenna, path loss by distance, houses that stand at fixed places
// along the route, the tunnel, and fading. The same seed, place and time give the same level.
class SignalModel {
 public:
  // `lap_m`: length of the route; the shadows of the end of a lap meet those of its start.
  SignalModel(std::uint64_t seed, double lap_m, Antenna antenna);

  // Level of the single vertical without shadows and fading, in dB above S9: 15 dB at 1 km, 30 dB less at
  // ten times the distance. Below 50 m it stays what it is at 50 m.
  static double PathLevelDb(double distance_m);
  // Loss behind houses at this place of the lap, dB; negative where reflections add.
  double ShadowDb(double along_m) const;
  // dB; slow in a standing car, fast in a moving one.
  double FadingDb(double driven_m, double time_s) const;
  // All of it, dB above S9.
  double LevelDb(const CarState& car, double time_s) const;

 private:
  struct Wave {
    double per_m = 0;  // radians
    double per_s = 0;
    double phase = 0;
  };
  double lap_m_;
  Antenna antenna_;
  std::vector<double> shadow_db_;
  std::array<Wave, 10> waves_;
};

}  // namespace kestrum::drivesim
