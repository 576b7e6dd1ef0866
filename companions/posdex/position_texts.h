#pragma once

#include <QString>
#include <array>
#include <optional>

#include "common/reader_contract.h"

namespace kestrum::posdex {

enum class FixType { kUnknown, kNone, k2D, k3D };

// What the receiver tells. A value that it does not tell is empty.
struct Fix {
  bool valid = false;
  std::optional<double> latitude_deg;   // -90 to 90, north positive
  std::optional<double> longitude_deg;  // -180 to 180, east positive
  std::optional<double> height_m;       // above mean sea level
  std::optional<double> speed_knots;
  std::optional<double> course_deg;  // over ground, 0 to 360
  FixType type = FixType::kUnknown;
  std::optional<int> satellites = std::nullopt;  // used for the position

  bool operator==(const Fix&) const = default;
};

// The six texts that the logger reads. As long as there has been no fix the position is all zeros and every
// number is missing; the validity "V" keeps the logger from using any of it.
struct GpsTexts {
  QString latitude = QStringLiteral("0000.0000N");
  QString longitude = QStringLiteral("00000.0000E");
  QString validity = QStringLiteral("V");
  QString compass = QStringLiteral("32768");
  QString height = QStringLiteral("32768");
  QString speed = QStringLiteral("32768");

  bool operator==(const GpsTexts&) const = default;
};

// One item of the link: its name, the caption beside it in the window, and where its text stands.
struct Item {
  const char* name;
  const char* caption;
  QString GpsTexts::*text;
};

inline constexpr std::array<Item, 6> kItems{{
    {reader::kItems[0], "Latitude", &GpsTexts::latitude},
    {reader::kItems[1], "Longitude", &GpsTexts::longitude},
    {reader::kItems[2], "Validity", &GpsTexts::validity},
    {reader::kItems[3], "Compass (degrees)", &GpsTexts::compass},
    {reader::kItems[4], "Height (feet)", &GpsTexts::height},
    {reader::kItems[5], "Speed (knots)", &GpsTexts::speed},
}};

// "ddmm.mmmmN" or "...S", rounded to the ten-thousandth of a minute; minutes never read 60. Empty when the
// value is not a number or lies outside -90 to 90.
QString LatitudeText(double degrees);

// "dddmm.mmmmE" or "...W", as LatitudeText; empty outside -180 to 180.
QString LongitudeText(double degrees);

// A plain decimal with at most one digit after the point; "32768" when the value is missing or not a number.
QString NumberText(std::optional<double> value);

// A course of any turn in degrees as NumberText, from 0 to below 360; "32768" when missing.
QString CourseText(std::optional<double> degrees);

// Height above sea level in feet as NumberText.
QString HeightText(std::optional<double> metres);

// The texts of a fix; a position that is missing or impossible reads as zeros.
GpsTexts TextsOf(const Fix& fix);

}  // namespace kestrum::posdex
