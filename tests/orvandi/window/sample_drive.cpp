#include "window/sample_drive.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>

namespace orvandi::test {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kKmPerDegree = 111.195;
constexpr double kLevelAt1Km = 74;  // dBuV/m in the main direction
constexpr double kBeamDeg = 55;
constexpr int kBlock = 100;

template <typename... Values>
std::string Format(const char* pattern, Values... values) {
  std::array<char, 200> text{};
  std::snprintf(text.data(), text.size(), pattern, values...);
  return text.data();
}

// As the logger writes numbers: four digits, no zero before the point.
std::string Number(double value) {
  std::string text = Format("%.*f", value < 10 ? 2 : value < 1000 ? 1 : 0, value);
  if (text.find('.') != std::string::npos) {
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
  }
  return text.starts_with("0.") ? text.substr(1) : text;
}

std::string Coordinate(double degrees, int width, char positive, char negative) {
  const double size = std::abs(degrees);
  const int whole = static_cast<int>(size);
  return Format("%0*d%07.4f%c", width, whole, (size - whole) * 60, degrees < 0 ? negative : positive);
}

std::string SPoint(double microvolt) {
  const double over = 20 * std::log10(microvolt / 50);
  if (over >= 10) return Format("S9 + %ddB", static_cast<int>(over / 10) * 10);
  if (over >= 0) return "S9+";
  return Format("S%d+", std::max(1, static_cast<int>(std::floor(9 + over / 6))));
}

std::string Clock(int seconds) {
  return Format("%02d:%02d:%02d", seconds / 3600 % 24, seconds / 60 % 60, seconds % 60);
}

struct Spot {
  double east_km = 0, north_km = 0, distance_km = 0, from_tx_deg = 0;
};

// A winding road that comes nearer with every second lap: each is driven once with either antenna.
Spot SpotAt(double drive_share, int laps) {
  const double driven = drive_share * laps;
  const double pairs = std::max(1.0, std::ceil(laps / 2.0));
  const double share = (std::floor(driven / 2) + driven - std::floor(driven)) / pairs;
  const double turn = share * pairs * 2 * kPi;
  const double radius =
      (7.2 - 6.2 * share) * (1 + 0.16 * std::sin(3 * turn + 1) + 0.07 * std::sin(7 * turn)) + 0.25;
  Spot spot;
  spot.east_km = 1.35 * radius * std::sin(turn) + 0.12 * std::sin(23 * turn);
  spot.north_km = radius * std::cos(turn) + 0.12 * std::cos(19 * turn);
  spot.distance_km = std::hypot(spot.east_km, spot.north_km);
  spot.from_tx_deg = std::fmod(std::atan2(spot.east_km, spot.north_km) * 180 / kPi + 360, 360);
  return spot;
}

std::string Header(const SampleDrive& drive, int flushed_s, bool beam) {
  const std::string line =
      Format("%02d-11-2026 %s, 5157.00N, 00532.00E, 25 m,  FT840 LSB 3630 kHz, %s", drive.day,
             Clock(flushed_s).c_str(), beam ? "Beam 3 el., PWR 10W" : "Vertical, PWR 10W");
  const std::string dashes(line.size(), '-');
  return dashes + "\r\n" + line + "\r\n" + dashes + "\r\n";
}

class Drive {
 public:
  explicit Drive(const SampleDrive& drive) : drive_(drive) {}

  std::string Record(int number, int time_s, bool beam) {
    const double share = static_cast<double>(number) / drive_.records;
    const bool no_fix = drive_.tunnel && share > 0.30 && share < 0.315;
    const bool asleep = drive_.tunnel && share > 0.52 && share < 0.53;
    const bool over = drive_.tunnel && number % 797 == 40;
    if (!no_fix) spot_ = SpotAt(share, drive_.laps);
    const double latitude = kTxLatitude + spot_.north_km / kKmPerDegree;
    const double longitude =
        kTxLongitude + spot_.east_km / (kKmPerDegree * std::cos(kTxLatitude * kPi / 180));
    slow_ = 0.97 * slow_ + 0.25 * normal_(random_) * drive_.fading_db;
    const double level = kLevelAt1Km + drive_.offset_db - 10 * kExponent * std::log10(spot_.distance_km) +
                         (beam ? BeamGain(spot_.from_tx_deg) : -6.0) + slow_ +
                         0.6 * drive_.fading_db * normal_(random_);
    const double field = std::pow(10, (level - 60) / 20);
    const double microvolt = field * 26;
    const int raw = asleep ? 0 : std::clamp(static_cast<int>(2.1 * (level + 10)), 1, 250);
    std::string line = Clock(time_s) + (no_fix ? ", No GPS, " : ", GPS Ok, ") +
                       Coordinate(latitude, 2, 'N', 'S') + ", " + Coordinate(longitude, 3, 'E', 'W') + ", " +
                       Number(spot_.distance_km) + " km, " + Number(12 + 6 * std::sin(share * 40)) + " m, " +
                       Format("%03d", static_cast<int>(std::fmod(spot_.from_tx_deg + 180, 360))) + "\xB0, " +
                       std::to_string(raw) + ", ";
    if (over) return line + "S?, ??? uV, ??? mV/m\r\n";
    return line + SPoint(microvolt) + ", " + Number(microvolt) + " uV, " + Number(field) + " mV/m\r\n";
  }

 private:
  SampleDrive drive_;
  std::mt19937 random_{7};
  std::normal_distribution<double> normal_;
  double slow_ = 0;
  Spot spot_;
};

}  // namespace

double BeamGain(double bearing_deg) {
  const double off = (bearing_deg - kBeamDeg) * kPi / 180;
  const double front = std::pow(std::max(0.0, std::cos(off / 2)), 3.2);
  return 20 * std::log10(0.16 + 0.84 * front);
}

std::string SampleLog(const SampleDrive& options) {
  Drive drive(options);
  std::string text;
  std::string block;
  constexpr int kStart = 10 * 3600 + 1200;
  for (int i = 0; i < options.records; ++i) {
    const int lap = i * options.laps / options.records;
    const bool beam = !options.two_antennas || lap % 2 == 0;
    const int time = kStart + 2 * i;
    block += drive.Record(i, time, beam);
    const bool last_of_antenna =
        i + 1 == options.records || (options.two_antennas && (i + 1) * options.laps / options.records != lap);
    if ((i + 1) % kBlock != 0 && !last_of_antenna) continue;
    text += Header(options, time, beam) + block;
    block.clear();
  }
  return text;
}

}  // namespace orvandi::test
