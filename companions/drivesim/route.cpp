#include "route.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace kestrum::drivesim {
namespace {

constexpr double kLengthM = 20000;
constexpr double kEarthRadiusM = 6371000;
constexpr int kPoints = 4000;
constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kRad = std::numbers::pi / 180;

/// Outline seen from its own middle, as a factor of its mean radius.
double OutlineRadius(double angle) {
  return 1 + 0.05 * std::cos(2 * angle + 1.0) + 0.06 * std::cos(3 * angle) +
         0.03 * std::cos(5 * angle + 2.0) + 0.012 * std::cos(9 * angle);
}

// The transmitter stands this far from the middle, in mean radii.
constexpr double kMiddleEast = 0.70;
constexpr double kMiddleNorth = 0.38;

struct Stop {
  double part_of_lap;
  double wait_s;
};
constexpr std::array<Stop, 5> kStops = {{{0.0, 8}, {0.06, 20}, {0.36, 30}, {0.55, 10}, {0.70, 25}}};

struct Town {
  double from;
  double to;
};
constexpr std::array<Town, 3> kTowns = {{{0.0, 0.09}, {0.30, 0.42}, {0.66, 0.76}}};

constexpr double kTownMps = 50 / 3.6;
constexpr double kRoadMps = 80 / 3.6;
constexpr double kAcceleration = 1.2;  // m/s2, braking too

std::vector<double> SpeedProfile(std::size_t steps, double step_m) {
  std::vector<double> speed(steps + 1, kRoadMps);
  for (std::size_t i = 0; i <= steps; ++i) {
    const double part = static_cast<double>(i) / static_cast<double>(steps);
    for (const Town& town : kTowns) {
      if (part >= town.from && part <= town.to) speed[i] = kTownMps;
    }
  }
  for (const Stop& stop : kStops) {
    speed[static_cast<std::size_t>(std::lround(stop.part_of_lap * static_cast<double>(steps)))] = 0;
  }
  speed[steps] = 0;  // the end of the lap is its start
  const double gain = 2 * kAcceleration * step_m;
  for (std::size_t i = 1; i <= steps; ++i) {
    speed[i] = std::min(speed[i], std::sqrt(speed[i - 1] * speed[i - 1] + gain));
  }
  for (std::size_t i = steps; i > 0; --i) {
    speed[i - 1] = std::min(speed[i - 1], std::sqrt(speed[i] * speed[i] + gain));
  }
  return speed;
}

}  // namespace

Route::Route(Position transmitter) : transmitter_(transmitter) {
  for (int i = 0; i < kPoints; ++i) {
    const double angle = kTwoPi * i / kPoints;
    const double radius = OutlineRadius(angle);
    // The angle runs with the compass, so the car goes clockwise.
    points_.push_back(
        {kMiddleEast + radius * std::sin(angle + 0.5), kMiddleNorth + radius * std::cos(angle + 0.5)});
  }
  along_.assign(1, 0.0);
  for (std::size_t i = 0; i < points_.size(); ++i) {
    const Offset& a = points_[i];
    const Offset& b = points_[(i + 1) % points_.size()];
    along_.push_back(along_.back() + std::hypot(b.east_m - a.east_m, b.north_m - a.north_m));
  }
  const double scale = kLengthM / along_.back();
  for (Offset& point : points_) {
    point.east_m *= scale;
    point.north_m *= scale;
  }
  for (double& along : along_) along *= scale;
  length_m_ = kLengthM;
}

double Route::Wrap(double along_m) const {
  const double wrapped = std::fmod(along_m, length_m_);
  return wrapped < 0 ? wrapped + length_m_ : wrapped;
}

Route::Offset Route::OffsetAt(double along_m) const {
  const double along = Wrap(along_m);
  const auto after = std::upper_bound(along_.begin() + 1, along_.end() - 1, along);
  const std::size_t i = static_cast<std::size_t>(after - along_.begin()) - 1;
  const Offset& a = points_[i];
  const Offset& b = points_[(i + 1) % points_.size()];
  const double part = (along - along_[i]) / (along_[i + 1] - along_[i]);
  return {a.east_m + part * (b.east_m - a.east_m), a.north_m + part * (b.north_m - a.north_m)};
}

Position Route::At(double along_m) const {
  const Offset offset = OffsetAt(along_m);
  const double lat = transmitter_.lat_deg + offset.north_m / kEarthRadiusM / kRad;
  const double parallel_m = kEarthRadiusM * std::cos(transmitter_.lat_deg * kRad);
  double longitude = transmitter_.long_deg + offset.east_m / parallel_m / kRad;
  if (longitude > 180) longitude -= 360;
  if (longitude < -180) longitude += 360;
  return {lat, longitude};
}

double Route::HeadingDeg(double along_m) const {
  // Over 30 m, so that the corners of the outline's short straight pieces do not show.
  const Offset behind = OffsetAt(along_m - 15);
  const Offset ahead = OffsetAt(along_m + 15);
  const double heading = std::atan2(ahead.east_m - behind.east_m, ahead.north_m - behind.north_m) / kRad;
  return heading < 0 ? heading + 360 : heading;
}

double Route::AltitudeM(double along_m) const {
  const double angle = kTwoPi * Wrap(along_m) / length_m_;
  return 24 + 9 * std::sin(2 * angle + 0.4) + 4 * std::sin(5 * angle) + 1.5 * std::cos(11 * angle);
}

double Route::DistanceToTransmitterM(double along_m) const {
  const Offset offset = OffsetAt(along_m);
  return std::hypot(offset.east_m, offset.north_m);
}

Car::Car(const Route& route) : route_(route) {
  constexpr std::size_t kSteps = 2000;
  step_m_ = route.LengthM() / kSteps;
  speed_mps_ = SpeedProfile(kSteps, step_m_);
  double time_s = 0;
  for (std::size_t i = 0; i <= kSteps; ++i) {
    if (i > 0) time_s += 2 * step_m_ / (speed_mps_[i - 1] + speed_mps_[i]);
    arrival_s_.push_back(time_s);
    for (const Stop& stop : kStops) {
      if (i < kSteps && std::lround(stop.part_of_lap * kSteps) == static_cast<long>(i)) {
        time_s += stop.wait_s;
      }
    }
    departure_s_.push_back(time_s);
  }
  lap_s_ = time_s;
}

CarState Car::At(double time_s) const {
  const double laps = std::floor(time_s / lap_s_);
  const double in_lap_s = std::clamp(time_s - laps * lap_s_, 0.0, lap_s_);
  const auto next = std::upper_bound(arrival_s_.begin() + 1, arrival_s_.end() - 1, in_lap_s);
  const std::size_t i = static_cast<std::size_t>(next - arrival_s_.begin()) - 1;
  const double from = speed_mps_[i];
  const double to = speed_mps_[i + 1];
  const double acceleration = (to * to - from * from) / (2 * step_m_);
  const double under_way_s = std::max(0.0, in_lap_s - departure_s_[i]);

  CarState state;
  state.speed_mps = from + acceleration * under_way_s;
  const double step = from * under_way_s + acceleration * under_way_s * under_way_s / 2;
  state.along_m = static_cast<double>(i) * step_m_ + std::clamp(step, 0.0, step_m_);
  state.driven_m = laps * route_.LengthM() + state.along_m;
  state.position = route_.At(state.along_m);
  state.heading_deg = route_.HeadingDeg(state.along_m);
  state.altitude_m = route_.AltitudeM(state.along_m);
  state.distance_m = route_.DistanceToTransmitterM(state.along_m);
  return state;
}

}  // namespace kestrum::drivesim
