#include "plots/level_axis.h"

#include <array>
#include <cmath>

namespace orvandi {
namespace {

constexpr double kDbPerSPoint = 6;
constexpr double kDbPerDecade = 20;
constexpr double kS9Db = 54;
constexpr double kMostTicks = 9;

QString Short(double value) {
  return QString::number(value, 'g', 3);
}

bool IsLinearUnit(Unit unit) {
  return unit == Unit::kMillivoltPerM || unit == Unit::kMicrovolt;
}

double LinearValue(double level_db, Unit unit) {
  return unit == Unit::kMillivoltPerM ? MillivoltPerM(level_db) : MicrovoltOfDbm(level_db);
}

double LevelOfLinear(double value, Unit unit) {
  return unit == Unit::kMillivoltPerM ? DbMicrovoltPerM(value) : DbmOfMicrovolt(value);
}

// Values 1, 2, 5 of every decade of exponents from..to; fewer of them where they would crowd.
QVector<double> DecadeValues(double from_exponent, double to_exponent) {
  const double decades = to_exponent - from_exponent;
  const std::array<double, 3> all = {1, 2, 5};
  const std::size_t used = decades * 3 <= kMostTicks ? all.size() : 1;
  const int step = std::max(1, static_cast<int>(std::ceil(decades / kMostTicks)));
  QVector<double> values;
  for (int exponent = static_cast<int>(std::floor(from_exponent)); exponent <= to_exponent;
       exponent += step) {
    for (std::size_t i = 0; i < used; ++i) values << all[i] * std::pow(10.0, exponent);
  }
  return values;
}

// 0, 6, ... to S9, then every 20 dB (10 where there is room); every third point where it is crowded.
QVector<double> SPointLevels(const QCPRange& range) {
  QVector<double> levels;
  const double s_step = range.size() > kMostTicks * kDbPerSPoint ? 2 * kDbPerSPoint : kDbPerSPoint;
  for (double level = s_step == kDbPerSPoint ? 0 : kDbPerSPoint; level <= kS9Db; level += s_step)
    levels << level;
  const double over_step = range.size() > 60 ? 20 : 10;
  for (double level = kS9Db + over_step; level <= range.upper; level += over_step) levels << level;
  return levels;
}

}  // namespace

QString UnitName(Unit unit) {
  const std::string_view text = UnitText(unit);
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString LevelNumber(double level_db, Unit unit) {
  if (std::isnan(level_db)) return QStringLiteral("?");
  if (unit == Unit::kSPoint) return QString::fromStdString(SPointLabel(level_db / kDbPerSPoint));
  if (IsLinearUnit(unit)) {
    const double value = LinearValue(level_db, unit);
    return value >= 1000 ? QString::number(value, 'f', 0) : Short(value);
  }
  return QString::number(level_db, 'f', 1);
}

QString LevelText(double level_db, Unit unit) {
  if (unit == Unit::kSPoint) return LevelNumber(level_db, unit);
  return LevelNumber(level_db, unit) + QLatin1Char(' ') + UnitName(unit);
}

QString AxisLabel(Unit unit) {
  switch (unit) {
    case Unit::kDbMicrovoltPerM:
    case Unit::kMillivoltPerM:
      return QStringLiteral("Field strength (%1)").arg(UnitName(unit));
    case Unit::kMicrovolt:
      return QStringLiteral("Input voltage (%1)").arg(UnitName(unit));
    case Unit::kDbm:
      return QStringLiteral("Input power (dBm)");
    case Unit::kSPoint:
      break;
  }
  return QStringLiteral("S-meter");
}

double LevelTicker::getTickStep(const QCPRange& range) {
  return QCPAxisTicker::getTickStep(range);
}

QVector<double> LevelTicker::createTickVector(double step, const QCPRange& range) {
  if (unit_ == Unit::kSPoint) return SPointLevels(range);
  if (!IsLinearUnit(unit_)) return QCPAxisTicker::createTickVector(step, range);
  QVector<double> ticks;
  const double from = std::log10(LinearValue(range.lower, unit_));
  for (const double value : DecadeValues(from, from + range.size() / kDbPerDecade)) {
    ticks << LevelOfLinear(value, unit_);
  }
  return ticks;
}

int LevelTicker::getSubTickCount(double step) {
  return unit_ == Unit::kDbMicrovoltPerM || unit_ == Unit::kDbm ? QCPAxisTicker::getSubTickCount(step) : 0;
}

QString LevelTicker::getTickLabel(double tick, const QLocale& /*locale*/, QChar /*format*/,
                                  int /*precision*/) {
  if (unit_ == Unit::kSPoint || IsLinearUnit(unit_)) return LevelNumber(tick, unit_);
  return QString::number(tick + 0.0, 'g', 6);
}

double DistanceTicker::getTickStep(const QCPRange& range) {
  return QCPAxisTicker::getTickStep(range);
}

QVector<double> DistanceTicker::createTickVector(double /*step*/, const QCPRange& range) {
  QVector<double> ticks;
  for (const double value : DecadeValues(range.lower, range.upper)) ticks << std::log10(value);
  return ticks;
}

int DistanceTicker::getSubTickCount(double /*step*/) {
  return 0;
}

QString DistanceTicker::getTickLabel(double tick, const QLocale& /*locale*/, QChar /*format*/,
                                     int /*precision*/) {
  const double km = std::pow(10, tick);
  constexpr double kMetresPerKm = 1000;
  return km < 0.9995 ? QStringLiteral("%1 m").arg(Short(km * kMetresPerKm))
                     : QStringLiteral("%1 km").arg(Short(km));
}

}  // namespace orvandi
