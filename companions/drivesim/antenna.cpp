#include "antenna.h"

#include <cmath>
#include <numbers>

namespace kestrum::drivesim {
namespace {

constexpr double kElements = 5;
constexpr double kScattered = 0.01;  // 20 dB below the power ahead

// Field of the end-fire array, 1 ahead.
double ArrayFactor(double off_deg) {
  const double psi = std::numbers::pi / 2 * (std::cos(off_deg * std::numbers::pi / 180) - 1);
  const double below = kElements * std::sin(psi / 2);
  return std::fabs(below) < 1e-9 ? 1 : std::fabs(std::sin(kElements * psi / 2) / below);
}

}  // namespace

std::optional<Antenna> AntennaOf(std::string_view name) {
  if (name == "beam") return Antenna::kBeam;
  if (name == "vertical") return Antenna::kVertical;
  return std::nullopt;
}

double AntennaGainDb(Antenna antenna, double bearing_deg) {
  if (antenna == Antenna::kVertical) return 0;
  const double field = ArrayFactor(bearing_deg - kBeamDeg);
  return 10 * std::log10(kElements * (field * field + kScattered) / (1 + kScattered));
}

}  // namespace kestrum::drivesim
