#include "route.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numbers>

namespace kestrum::drivesim {
namespace {

constexpr double kRoadM = 20000;
constexpr double kEarthRadiusM = 6371000;
constexpr int kPoints = 4000;
constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kRad = std::numbers::pi / 180;

// Outline seen from its own middle, as a factor of its mean radius.
double OutlineRadius(double angle) {
  return 1 + 0.05 * std::cos(2 * angle + 1.0) + 0.06 * std::cos(3 * angle) +
         0.03 * std::cos(5 * angle + 2.0) + 0.012 * std::cos(9 * angle);
}

// The transmitter stands this far from the middle, in mean radii.
constexpr double kMiddleEast = 0.70;
constexpr double kMiddleNorth = 0.38;

struct Stretch {
  double from_m;
  double to_m;
};
constexpr Stretch kTunnel = {6700, 6900};
constexpr std::array<Stretch, 5> kTowns = {
    {{0, 1800}, {6000, 8400}, {19000, 21500}, {33200, 35200}, {39900, 40000}}};

struct Stop {
  double at_m;
  double wait_s;
};
constexpr std::array<Stop, 6> kStops = {
    {{0, 8}, {1200, 20}, {7200, 30}, {20500, 15}, {31000, 10}, {34000, 25}}};
constexpr double kTurnWaitS = 5;

constexpr double kTownMps = 50 / 3.6;
constexpr double kRoadMps = 80 / 3.6;
constexpr double kAcceleration = 1.2;  // m/s2, braking too

// Where the car stands, and for how long, by the steps of a lap.
std::map<std::size_t, double> Waits(const Route& route, double step_m) {
  const auto step_of = [step_m](double along_m) {
    return static_cast<std::size_t>(std::lround(along_m / step_m));
  };
  std::map<std::size_t, double> waits;
  for (const Stop& stop : kStops) waits[step_of(stop.at_m)] = stop.wait_s;
  for (const double turn_m : route.TurnsM()) waits[step_of(turn_m)] = kTurnWaitS;
  return waits;
}

std::vector<double> SpeedProfile(const std::map<std::size_t, double>& waits, std::size_t steps,
                                 double step_m) {
  std::vector<double> speed(steps + 1, kRoadMps);
  for (std::size_t i = 0; i <= steps; ++i) {
    const double along_m = static_cast<double>(i) * step_m;
    for (const Stretch& town : kTowns) {
      if (along_m >= town.from_m && along_m <= town.to_m) speed[i] = kTownMps;
    }
  }
  for (const auto& [step, wait_s] : waits) speed[step] = 0;
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

double BearingOf(double east_m, double north_m) {
  const double bearing = std::atan2(east_m, north_m) / kRad;
  return bearing < 0 ? bearing + 360 : bearing;
}

}  // namespace

std::vector<Route::Offset> Route::FirstRoad() {
  std::vector<Offset> road;
  for (int i = 0; i < kPoints; ++i) {
    const double angle = kTwoPi * i / kPoints;
    const double radius = OutlineRadius(angle);
    // The angle runs with the compass, so the car goes clockwise.
    road.push_back(
        {kMiddleEast + radius * std::sin(angle + 0.5), kMiddleNorth + radius * std::cos(angle + 0.5)});
  }
  double around = 0;
  for (std::size_t i = 0; i < road.size(); ++i) {
    const Offset& a = road[i];
    const Offset& b = road[(i + 1) % road.size()];
    around += std::hypot(b.east_m - a.east_m, b.north_m - a.north_m);
  }
  for (Offset& point : road) {
    point.east_m *= kRoadM / around;
    point.north_m *= kRoadM / around;
  }
  return road;
}

// The second road is the first one, turned by half a circle about the transmitter. Where they cross, a point
// of the first lies opposite to another point of it, at the same distance.
Route::Route(Position transmitter) : transmitter_(transmitter) {
  const std::vector<Offset> road = FirstRoad();
  const std::size_t count = road.size();
  const auto gap = [&road](std::size_t i, std::size_t j) {
    return std::hypot(road[i].east_m + road[j].east_m, road[i].north_m + road[j].north_m);
  };
  // Clockwise from the point j to the direction opposite to i.
  const auto lags = [&road](std::size_t i, std::size_t j) {
    return road[j].east_m * road[i].north_m > road[j].north_m * road[i].east_m;
  };
  std::size_t opposite = 0;
  for (std::size_t j = 1; j < count; ++j) {
    if (gap(0, j) < gap(0, opposite)) opposite = j;
  }
  std::size_t turn = 0;
  std::size_t joins = opposite;
  for (std::size_t i = 1; i < count / 2; ++i) {
    while (lags(i, (opposite + 1) % count)) opposite = (opposite + 1) % count;
    if (gap(i, opposite) < gap(turn, joins)) {
      turn = i;
      joins = opposite;
    }
  }
  points_.assign(road.begin(), road.begin() + static_cast<std::ptrdiff_t>(turn) + 1);
  for (std::size_t i = 1; i <= count; ++i) {
    const Offset& point = road[(joins + i) % count];
    points_.push_back({-point.east_m, -point.north_m});
  }
  points_.insert(points_.end(), road.begin() + static_cast<std::ptrdiff_t>(turn) + 1, road.end());
  along_.assign(1, 0.0);
  for (std::size_t i = 0; i < points_.size(); ++i) {
    const Offset& a = points_[i];
    const Offset& b = points_[(i + 1) % points_.size()];
    along_.push_back(along_.back() + std::hypot(b.east_m - a.east_m, b.north_m - a.north_m));
  }
  length_m_ = along_.back();
  turns_m_ = {along_[turn], along_[turn + count]};
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
  return BearingOf(ahead.east_m - behind.east_m, ahead.north_m - behind.north_m);
}

double Route::AltitudeM(double along_m) const {
  const double angle = kTwoPi * Wrap(along_m) / kRoadM;
  return 24 + 9 * std::sin(2 * angle + 0.4) + 4 * std::sin(5 * angle) + 1.5 * std::cos(11 * angle);
}

double Route::DistanceToTransmitterM(double along_m) const {
  const Offset offset = OffsetAt(along_m);
  return std::hypot(offset.east_m, offset.north_m);
}

double Route::BearingDeg(double along_m) const {
  const Offset offset = OffsetAt(along_m);
  return BearingOf(offset.east_m, offset.north_m);
}

bool Route::InTunnel(double along_m) const {
  const double along = Wrap(along_m);
  return along >= kTunnel.from_m && along < kTunnel.to_m;
}

Car::Car(const Route& route) : route_(route) {
  constexpr std::size_t kSteps = 4000;
  step_m_ = route.LengthM() / kSteps;
  const auto waits = Waits(route, step_m_);
  speed_mps_ = SpeedProfile(waits, kSteps, step_m_);
  double time_s = 0;
  for (std::size_t i = 0; i <= kSteps; ++i) {
    if (i > 0) time_s += 2 * step_m_ / (speed_mps_[i - 1] + speed_mps_[i]);
    arrival_s_.push_back(time_s);
    const auto wait = waits.find(i);
    if (wait != waits.end()) time_s += wait->second;
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
  state.bearing_deg = route_.BearingDeg(state.along_m);
  state.in_tunnel = route_.InTunnel(state.along_m);
  return state;
}

}  // namespace kestrum::drivesim
