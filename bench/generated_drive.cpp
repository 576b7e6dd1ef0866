#include "generated_drive.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <numbers>

namespace kestrum::bench {
namespace {

constexpr double kTxLatitude = 51.95;
constexpr double kTxLongitude = 5.533333;
constexpr double kKmPerDegree = 111.195;
constexpr std::size_t kRecordsPerBlock = 100;

struct Reading {
  double latitude = 0;
  double longitude = 0;
  double distance_km = 0;
  double to_tx_deg = 0;
  double millivolt_per_m = 0;
  int raw = 0;
};

// The same for every run: fading of the second's own.
double Fading(std::size_t second) {
  auto bits = static_cast<std::uint64_t>(second) * 0x9E3779B97F4A7C15U;
  bits ^= bits >> 29;
  bits *= 0xBF58476D1CE4E5B9U;
  return static_cast<double>(bits >> 40) / (1 << 24) * 8 - 4;
}

Reading ReadingAt(std::size_t second) {
  const auto time = static_cast<double>(second);
  const double radius_km = 3 + 2.5 * std::sin(time / 977) + 0.4 * std::sin(time / 53);
  const double angle = time / 1800 * 2 * std::numbers::pi;
  Reading reading;
  reading.latitude = kTxLatitude + radius_km * std::cos(angle) / kKmPerDegree;
  reading.longitude = kTxLongitude + radius_km * std::sin(angle) /
                                         (kKmPerDegree * std::cos(kTxLatitude * std::numbers::pi / 180));
  reading.distance_km = radius_km;
  reading.to_tx_deg = std::fmod(angle * 180 / std::numbers::pi + 180, 360);
  const double pattern_db = second / 3600 % 2 == 0 ? 0 : 6 * std::cos(angle - 1);
  const double level_db = 75 + pattern_db - 28 * std::log10(radius_km) + Fading(second);
  reading.millivolt_per_m = std::pow(10, level_db / 20) / 1000;
  reading.raw = static_cast<int>(std::lround(std::fmin(std::fmax(level_db * 2 - 30, 1), 234)));
  return reading;
}

// "5156.0633N": degrees and minutes with four decimals.
std::string Coordinate(double degrees, int degree_digits, char hemisphere) {
  std::array<char, 32> text{};
  const double whole = std::floor(degrees);
  std::snprintf(text.data(), text.size(), "%0*d%07.4f%c", degree_digits, static_cast<int>(whole),
                std::fmin((degrees - whole) * 60, 59.9999), hemisphere);
  return text.data();
}

std::string Stamp(std::size_t second) {
  using namespace std::chrono;
  const sys_seconds time = sys_days(year(2026) / January / 1) + seconds(second);
  const year_month_day day(floor<days>(time));
  const hh_mm_ss clock(time - floor<days>(time));
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%02u-%02u-%04d %02d:%02d:%02d", static_cast<unsigned>(day.day()),
                static_cast<unsigned>(day.month()), static_cast<int>(day.year()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text.data();
}

std::string RecordLine(std::size_t second) {
  const Reading reading = ReadingAt(second);
  std::array<char, 160> text{};
  std::snprintf(text.data(), text.size(), ", %.2f km, %.1f m, %03d\xB0, %d, S%d+, %.1f uV, %.2f mV/m\r\n",
                reading.distance_km, 4.3, static_cast<int>(reading.to_tx_deg), reading.raw, reading.raw / 26,
                reading.millivolt_per_m * 2.4, reading.millivolt_per_m);
  return Stamp(second).substr(11) + ", GPS Ok, " + Coordinate(reading.latitude, 2, 'N') + ", " +
         Coordinate(reading.longitude, 3, 'E') + text.data();
}

}  // namespace

std::string GeneratedDrive(std::size_t records, std::size_t start) {
  std::string log;
  log.reserve(records * 100);
  for (std::size_t first = 0; first < records; first += kRecordsPerBlock) {
    const std::size_t count = std::min(kRecordsPerBlock, records - first);
    const std::size_t last = start + first + count - 1;
    const std::string header = Stamp(last) + ", 5157.00N, 00532.00E, 25 m,  FT840 LSB  3630 kHz, " +
                               (last / 3600 % 2 == 0 ? "Loop, PWR 10W" : "Yagi, PWR 10W");
    const std::string dashes(header.size(), '-');
    log += dashes + "\r\n" + header + "\r\n" + dashes + "\r\n";
    for (std::size_t record = 0; record < count; ++record) log += RecordLine(start + first + record);
  }
  return log;
}

}  // namespace kestrum::bench
