#pragma once

#include <optional>
#include <string_view>

namespace kestrum::drivesim {

// What the transmitter feeds.
enum class Antenna {
  kBeam,      // five verticals in a row, a quarter wave apart, that point to 235 degrees
  kVertical,  // one vertical: the same in all directions
};

// "beam", "vertical"; nothing for other names.
std::optional<Antenna> AntennaOf(std::string_view name);

constexpr double kBeamDeg = 235;

// What the antenna gains over the single vertical towards a bearing seen from the transmitter (degrees, any
// value), in dB. The beam is an ordinary end-fire array of N = 5 equal elements, d = 1/4 wave apart, each
// fed with the phase of the wave that passes it (Balanis, Antenna Theory, chapter 6):
//   psi = pi/2 (cos(bearing - 235) - 1), F = |sin(N psi / 2) / (N sin(psi / 2))|
// What the ground scatters stands 20 dB below the main lobe and fills the nulls. Together: 7 dB ahead, 13 dB
// less behind, side lobes 101 degrees to either side, 11.5 dB down, nulls at 78 and 127 degrees.
double AntennaGainDb(Antenna antenna, double bearing_deg);

}  // namespace kestrum::drivesim
