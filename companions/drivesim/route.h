#pragma once

#include <array>
#include <vector>

namespace kestrum::drivesim {

// Decimal degrees, north and east positive.
struct Position {
  double lat_deg = 0;
  double long_deg = 0;
};

// Two roads of 20 km around the transmitter, which cross each other. It stands near one side of the first
// and near the opposite side of the second, so that a lap over both, first one, then the other, sees it from
// every side at two distances, between half a kilometre and almost six. The first road has a tunnel.
class Route {
 public:
  explicit Route(Position transmitter);

  // Of a lap.
  double LengthM() const { return length_m_; }
  // Where a lap comes to the crossing and turns off, metres from its start: to the second road and back.
  const std::array<double, 2>& TurnsM() const { return turns_m_; }
  // `along_m` is the way from the start of the lap; any value, it goes round.
  Position At(double along_m) const;
  // True heading of a car that follows the route, 0 <= degrees < 360.
  double HeadingDeg(double along_m) const;
  // Height above the sea.
  double AltitudeM(double along_m) const;
  double DistanceToTransmitterM(double along_m) const;
  // Seen from the transmitter, 0 <= degrees < 360.
  double BearingDeg(double along_m) const;
  bool InTunnel(double along_m) const;

 private:
  struct Offset {
    double east_m = 0;
    double north_m = 0;
  };
  static std::vector<Offset> FirstRoad();
  Offset OffsetAt(double along_m) const;
  double Wrap(double along_m) const;

  Position transmitter_;
  double length_m_ = 0;
  std::array<double, 2> turns_m_{};
  std::vector<Offset> points_;
  std::vector<double> along_;  // of each point; one more than points_, the last is the whole length
};

struct CarState {
  double along_m = 0;   // way from the start of the lap
  double driven_m = 0;  // way since the start of the drive
  double speed_mps = 0;
  Position position;
  double heading_deg = 0;
  double altitude_m = 0;
  double distance_m = 0;   // to the transmitter
  double bearing_deg = 0;  // seen from the transmitter
  bool in_tunnel = false;
};

// A driver who keeps to 50 km/h in town and 80 km/h outside, waits at crossroads and where the roads cross.
// The state is a function of the time alone, so a drive can be replayed from any moment.
class Car {
 public:
  explicit Car(const Route& route);

  // `time_s`: seconds since the start, 0 or more.
  CarState At(double time_s) const;
  double LapS() const { return lap_s_; }

 private:
  const Route& route_;
  double lap_s_ = 0;
  double step_m_ = 0;
  std::vector<double> speed_mps_;  // at each step of the lap, first and last included
  std::vector<double> arrival_s_;
  std::vector<double> departure_s_;
};

}  // namespace kestrum::drivesim
