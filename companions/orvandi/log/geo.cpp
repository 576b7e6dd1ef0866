#include "log/geo.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvandi {
namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180;

double Radians(double degrees) {
  return degrees * kRadiansPerDegree;
}

double HalfSineSquared(double radians) {
  const double sine = std::sin(radians / 2);
  return sine * sine;
}

// 0 to below 360.
double WholeTurn(double degrees) {
  const double turned = std::fmod(degrees, 360);
  const double positive = turned < 0 ? turned + 360 : turned;
  return positive < 360 ? positive : 0;
}

}  // namespace

double DistanceKm(const Place& from, const Place& to) {
  const double from_latitude = Radians(from.latitude_deg);
  const double to_latitude = Radians(to.latitude_deg);
  const double haversine = HalfSineSquared(to_latitude - from_latitude) +
                           std::cos(from_latitude) * std::cos(to_latitude) *
                               HalfSineSquared(Radians(to.longitude_deg - from.longitude_deg));
  return 2 * kEarthRadiusKm * std::asin(std::sqrt(std::clamp(haversine, 0.0, 1.0)));
}

double BearingDeg(const Place& from, const Place& to) {
  const double from_latitude = Radians(from.latitude_deg);
  const double to_latitude = Radians(to.latitude_deg);
  const double east = Radians(to.longitude_deg - from.longitude_deg);
  const double y = std::sin(east) * std::cos(to_latitude);
  const double x = std::cos(from_latitude) * std::sin(to_latitude) -
                   std::sin(from_latitude) * std::cos(to_latitude) * std::cos(east);
  if (x == 0 && y == 0) return 0;
  return WholeTurn(std::atan2(y, x) / kRadiansPerDegree);
}

Place Destination(const Place& from, double bearing_deg, double distance_km) {
  const double latitude = Radians(from.latitude_deg);
  const double bearing = Radians(bearing_deg);
  const double angle = distance_km / kEarthRadiusKm;
  const double sine =
      std::sin(latitude) * std::cos(angle) + std::cos(latitude) * std::sin(angle) * std::cos(bearing);
  const double east = std::atan2(std::sin(bearing) * std::sin(angle) * std::cos(latitude),
                                 std::cos(angle) - std::sin(latitude) * sine);
  Place place;
  place.latitude_deg = std::asin(std::clamp(sine, -1.0, 1.0)) / kRadiansPerDegree;
  place.longitude_deg = std::remainder(from.longitude_deg + east / kRadiansPerDegree, 360.0);
  return place;
}

}  // namespace orvandi
