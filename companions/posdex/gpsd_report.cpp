#include "gpsd_report.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace kestrum::posdex {
namespace {

constexpr double kKnotsPerMetreASecond = 3.6 / 1.852;
constexpr int kMostSatellites = 1000;

std::optional<double> NumberOf(const QJsonObject& object, const char* name, double factor = 1.0) {
  const QJsonValue value = object[QLatin1String(name)];
  if (!value.isDouble() || !std::isfinite(value.toDouble())) return std::nullopt;
  return value.toDouble() * factor;
}

std::optional<double> Within(std::optional<double> value, double limit) {
  return value && std::abs(*value) <= limit ? value : std::nullopt;
}

// The values of a TPV; without a mode it is about something else than a fix, and a mode that is not known yet
// says only that there is a receiver.
std::optional<Fix> PositionOf(const QJsonObject& tpv) {
  Fix fix;
  switch (tpv[QLatin1String("mode")].toInt(0)) {
    case 1:
      fix.type = FixType::kNone;
      return fix;
    case 2:
      fix.type = FixType::k2D;
      break;
    case 3:
      fix.type = FixType::k3D;
      break;
    default:
      if (!tpv[QLatin1String("mode")].isDouble()) return std::nullopt;
      return fix;
  }
  fix.latitude_deg = Within(NumberOf(tpv, "lat"), 90.0);
  fix.longitude_deg = Within(NumberOf(tpv, "lon"), 180.0);
  fix.valid = fix.latitude_deg && fix.longitude_deg;
  fix.height_m = NumberOf(tpv, "altMSL");
  // The only height of older daemons, above sea level as well.
  if (!fix.height_m) fix.height_m = NumberOf(tpv, "alt");
  fix.speed_knots = NumberOf(tpv, "speed", kKnotsPerMetreASecond);
  fix.course_deg = NumberOf(tpv, "track");
  return fix;
}

std::optional<int> SatellitesOf(const QJsonObject& sky) {
  if (const auto told = NumberOf(sky, "uSat"); told && *told >= 0 && *told <= kMostSatellites) {
    return static_cast<int>(*told);
  }
  const QJsonValue list = sky[QLatin1String("satellites")];
  if (!list.isArray()) return std::nullopt;
  int used = 0;
  const QJsonArray satellites = list.toArray();
  for (const auto& satellite : satellites) used += satellite[QLatin1String("used")].toBool() ? 1 : 0;
  return used;
}

}  // namespace

GpsdReport ParseGpsdReport(const QByteArray& line) {
  const QJsonObject object = QJsonDocument::fromJson(line).object();
  const QString kind = object[QLatin1String("class")].toString();
  GpsdReport report;
  report.receiver = object[QLatin1String("device")].toString();
  if (kind == QLatin1String("TPV")) {
    report.position = PositionOf(object);
  } else if (kind == QLatin1String("SKY")) {
    report.satellites = SatellitesOf(object);
  } else if (kind == QLatin1String("DEVICES") && object[QLatin1String("devices")].toArray().isEmpty()) {
    report.trouble = QStringLiteral("gpsd has no receiver");
  } else if (kind == QLatin1String("DEVICE")) {
    report.receiver = object[QLatin1String("path")].toString();
    const QJsonValue activated = object[QLatin1String("activated")];
    if (activated.isDouble() && activated.toDouble() == 0.0) {
      report.trouble = QStringLiteral("gpsd has lost its receiver");
    }
  }
  return report;
}

}  // namespace kestrum::posdex
