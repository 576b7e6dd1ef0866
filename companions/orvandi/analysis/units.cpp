#include "analysis/units.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace orvandi {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kOhm = 50;
constexpr double kMilliwatt = 1e-3;
constexpr double kDbPerSPoint = 6;
constexpr double kS9 = 9;

// Takes a number off the front.
bool TakeNumber(std::string_view& text, double& number) {
  const auto result =
      std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  if (result.ec != std::errc() || !std::isfinite(number)) return false;
  text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
  return true;
}

void SkipBlanks(std::string_view& text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
}

}  // namespace

std::string_view UnitText(Unit unit) {
  switch (unit) {
    case Unit::kDbMicrovoltPerM:
      return "dB\xC2\xB5V/m";
    case Unit::kMillivoltPerM:
      return "mV/m";
    case Unit::kMicrovolt:
      return "\xC2\xB5V";
    case Unit::kDbm:
      return "dBm";
    case Unit::kSPoint:
      return "S";
  }
  return {};
}

bool IsLogarithmic(Unit unit) {
  return unit != Unit::kMillivoltPerM && unit != Unit::kMicrovolt;
}

double DbMicrovoltPerM(double millivolt_per_m) {
  return millivolt_per_m > 0 ? 20 * std::log10(millivolt_per_m * 1000) : kNone;
}

double MillivoltPerM(double db_microvolt_per_m) {
  return std::pow(10, db_microvolt_per_m / 20) / 1000;
}

double DbmOfMicrovolt(double microvolt) {
  if (!(microvolt > 0)) return kNone;
  const double volt = microvolt * 1e-6;
  return 10 * std::log10(volt * volt / kOhm / kMilliwatt);
}

double MicrovoltOfDbm(double dbm) {
  return std::sqrt(std::pow(10, dbm / 10) * kMilliwatt * kOhm) * 1e6;
}

double SPointOfText(std::string_view text) {
  if (!text.starts_with('S') && !text.starts_with('s')) return kNone;
  text.remove_prefix(1);
  double point = 0;
  if (text.starts_with('-') || !TakeNumber(text, point)) return kNone;
  SkipBlanks(text);
  if (text.empty()) return point;
  if (text.front() != '+') return kNone;
  text.remove_prefix(1);
  SkipBlanks(text);
  if (text.empty()) return point + 0.5;
  double decibels = 0;
  if (text.starts_with('-') || !TakeNumber(text, decibels)) return kNone;
  return point + decibels / kDbPerSPoint;
}

std::string SPointLabel(double s_point) {
  if (!std::isfinite(s_point) || std::fabs(s_point) > 1000) return {};
  if (s_point <= kS9) return "S" + std::to_string(std::lround(s_point));
  const long decibels = std::lround((s_point - kS9) * kDbPerSPoint);
  return decibels == 0 ? "S9" : "S9+" + std::to_string(decibels);
}

}  // namespace orvandi
