#include "position_texts.h"

#include <cmath>

namespace kestrum::posdex {
namespace {

constexpr double kMetresPerFoot = 0.3048;
constexpr qint64 kMinuteFraction = 10000;
constexpr qint64 kDegreeFraction = 60 * kMinuteFraction;
// A receiver that claims more is broken; a longer number would not fit the labels either.
constexpr double kLargestNumber = 1e7;

struct Axis {
  int degree_digits;
  double limit;
  QLatin1Char positive;
  QLatin1Char negative;
};

QString CoordinateText(double degrees, const Axis& axis) {
  if (!std::isfinite(degrees) || std::abs(degrees) > axis.limit) return {};
  const qint64 total = std::llround(std::abs(degrees) * static_cast<double>(kDegreeFraction));
  const qint64 minutes = total % kDegreeFraction;
  const QChar letter = degrees < 0 && total != 0 ? axis.negative : axis.positive;
  return QStringLiteral("%1%2.%3%4")
      .arg(total / kDegreeFraction, axis.degree_digits, 10, QLatin1Char('0'))
      .arg(minutes / kMinuteFraction, 2, 10, QLatin1Char('0'))
      .arg(minutes % kMinuteFraction, 4, 10, QLatin1Char('0'))
      .arg(letter);
}

}  // namespace

QString LatitudeText(double degrees) {
  return CoordinateText(degrees, {2, 90.0, QLatin1Char('N'), QLatin1Char('S')});
}

QString LongitudeText(double degrees) {
  return CoordinateText(degrees, {3, 180.0, QLatin1Char('E'), QLatin1Char('W')});
}

QString NumberText(std::optional<double> value) {
  if (!value || !std::isfinite(*value) || std::abs(*value) > kLargestNumber) return QStringLiteral("32768");
  QString text = QString::number(*value, 'f', 1);
  if (text.endsWith(QLatin1String(".0"))) text.chop(2);
  if (text == QLatin1String("-0")) text = QStringLiteral("0");
  return text;
}

QString CourseText(std::optional<double> degrees) {
  constexpr double kTurn = 360.0;
  if (degrees && std::abs(*degrees) < kLargestNumber) {
    degrees = std::fmod(*degrees, kTurn);
    if (*degrees < 0) degrees = *degrees + kTurn;
  }
  const QString text = NumberText(degrees);
  return text == QLatin1String("360") ? QStringLiteral("0") : text;
}

QString HeightText(std::optional<double> metres) {
  if (metres) metres = *metres / kMetresPerFoot;
  return NumberText(metres);
}

GpsTexts TextsOf(const Fix& fix) {
  GpsTexts texts;
  if (fix.latitude_deg && fix.longitude_deg) {
    const QString latitude = LatitudeText(*fix.latitude_deg);
    const QString longitude = LongitudeText(*fix.longitude_deg);
    if (!latitude.isEmpty() && !longitude.isEmpty()) {
      texts.latitude = latitude;
      texts.longitude = longitude;
    }
  }
  texts.validity = fix.valid ? QStringLiteral("A") : QStringLiteral("V");
  texts.compass = CourseText(fix.course_deg);
  texts.height = HeightText(fix.height_m);
  texts.speed = NumberText(fix.speed_knots);
  return texts;
}

}  // namespace kestrum::posdex
