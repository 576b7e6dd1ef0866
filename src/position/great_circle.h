#pragma once

#include <string>
#include <string_view>

namespace kestrum {

struct Position {
  double latitude_deg = 0;   // north positive
  double longitude_deg = 0;  // east positive
};

inline constexpr float kNoBearing = -1;

// Great-circle distance and initial bearing on a sphere after reducing latitudes to geocentric ones.
class GreatCircle {
 public:
  // Computes the geometry constants: earth radius 6367 km and the squared ratio of polar to equatorial
  // radius.
  GreatCircle();

  Position rx;
  Position tx;
  Position reference;  // where the distance interval starts

  float distance_km = 0;
  float bearing_deg = kNoBearing;  // 0 to 360, one decimal

  // From rx to tx. Equal positions leave both results as they were; where the formula has no answer, what was
  // computed so far stands and the rest keeps its value.
  void CalcDistBearing() { CalcDistBearing(tx); }
  // The same from rx to another place.
  void CalcDistBearing(const Position& to);

 private:
  double earth_radius_km_;
  double latitude_factor_;
};

// Maximal line-of-sight distance of two antenna heights, e.g. "16.3", or "??.?" when a height is unknown.
// D = 3.568 km x (sqrt(h1) + sqrt(h2)), heights in metres.
std::string OpticalDistanceText(std::string_view tx_height, std::string_view rx_height);

// Compass-rose word of a number of degrees followed by one blank; "? " in the gaps between the sectors.
std::string CompassText(std::string_view degrees);

// Relative heading as at least three characters from the compass text and the whole bearing; "32768" when the
// compass has no value.
// Kept on purpose: compass and bearing are added; the displays in the field are read that way.
std::string PelorusText(std::string_view compass, int bearing_deg);

}  // namespace kestrum
