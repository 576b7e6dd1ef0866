#pragma once

namespace orvandi {

struct Place {
  double latitude_deg = 0;   // -90 to 90, north positive
  double longitude_deg = 0;  // -180 to 180, east positive
};

// Mean radius of the earth (IUGG, R1 = (2a + b) / 3 of WGS84). On the distances of a drive the sphere is
// within 0.5 % of the ellipsoid, 0.04 dB of a 20 dB per decade law.
inline constexpr double kEarthRadiusKm = 6371.0088;

// Great-circle distance by the haversine formula, exact for small distances too.
double DistanceKm(const Place& from, const Place& to);
// Initial bearing of the great circle, 0 to below 360, 0 is north, clockwise; 0 for equal places.
double BearingDeg(const Place& from, const Place& to);
// The place that lies so far away in that direction: points of a range ring.
Place Destination(const Place& from, double bearing_deg, double distance_km);

}  // namespace orvandi
