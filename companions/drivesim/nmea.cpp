#include "nmea.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace kestrum::drivesim {
namespace {

constexpr double kKnotsPerMps = 3600.0 / 1852.0;

template <typename... Values>
std::string Format(const char* pattern, Values... values) {
  std::array<char, 160> text{};
  const int length = std::snprintf(text.data(), text.size(), pattern, values...);
  return std::string(text.data(), static_cast<std::size_t>(length));
}

// Whole ten-thousandths of a minute first, so that 59.99996 becomes the next degree and never "60.0000".
std::string Angle(double degrees, int degree_digits, char positive, char negative) {
  const long long units = std::llround(std::fabs(degrees) * 600000);
  const long long whole = units / 600000;
  const long long minutes = units % 600000;
  return Format("%0*lld%02lld.%04lld,%c", degree_digits, whole, minutes / 10000, minutes % 10000,
                degrees < 0 ? negative : positive);
}

std::string TimeText(std::int64_t utc_s) {
  const int second = static_cast<int>(((utc_s % 86400) + 86400) % 86400);
  return Format("%02d%02d%02d.00", second / 3600, second / 60 % 60, second % 60);
}

std::string DateText(std::int64_t utc_s) {
  using std::chrono::days;
  const auto day = std::chrono::floor<days>(std::chrono::sys_seconds{std::chrono::seconds{utc_s}});
  const std::chrono::year_month_day date{day};
  return Format("%02u%02u%02d", static_cast<unsigned>(date.day()), static_cast<unsigned>(date.month()),
                static_cast<int>(date.year()) % 100);
}

std::optional<int> Digits(std::string_view text, std::size_t from, std::size_t count) {
  int value = 0;
  const char* end = text.data() + from + count;
  const auto [stop, error] = std::from_chars(text.data() + from, end, value);
  if (error != std::errc{} || stop != end || value < 0) return std::nullopt;
  return value;
}

}  // namespace

std::string NmeaSentence(std::string_view body) {
  unsigned sum = 0;
  for (const char c : body) sum ^= static_cast<unsigned char>(c);
  std::string sentence = "$";
  return sentence.append(body).append(Format("*%02X\r\n", sum));
}

std::string NmeaLatitude(double lat_deg) {
  return Angle(lat_deg, 2, 'N', 'S');
}

std::string NmeaLongitude(double long_deg) {
  return Angle(long_deg, 3, 'E', 'W');
}

std::string RmcSentence(const CarState& car, std::int64_t utc_s, bool fix) {
  std::string body = "GPRMC," + TimeText(utc_s) + (fix ? ",A," : ",V,");
  if (fix) {
    // A heading that rounds to 360.0 is north.
    const double heading = car.heading_deg >= 359.95 ? 0 : car.heading_deg;
    body += NmeaLatitude(car.position.lat_deg) + "," + NmeaLongitude(car.position.long_deg) +
            Format(",%.2f,%.1f,", car.speed_mps * kKnotsPerMps, heading);
  } else {
    body += ",,,,,,";
  }
  return NmeaSentence(body + DateText(utc_s) + (fix ? ",,,A" : ",,,N"));
}

std::string GgaSentence(const CarState& car, std::int64_t utc_s, bool fix) {
  std::string body = "GPGGA," + TimeText(utc_s) + ",";
  if (fix) {
    body += NmeaLatitude(car.position.lat_deg) + "," + NmeaLongitude(car.position.long_deg) +
            Format(",1,09,0.9,%.1f,M,45.0,M,,", car.altitude_m);
  } else {
    body += ",,,,0,00,99.9,,M,,M,,";
  }
  return NmeaSentence(body);
}

std::string GsaSentence(bool fix) {
  return NmeaSentence(fix ? "GPGSA,A,3,02,05,07,09,13,15,20,28,30,,,,1.6,0.9,1.3"
                          : "GPGSA,A,1,,,,,,,,,,,,,99.9,99.9,99.9");
}

std::optional<std::int64_t> ParseUtc(std::string_view text) {
  if (text.ends_with('Z')) text.remove_suffix(1);
  if (text.size() != 19 || text[4] != '-' || text[7] != '-' || text[10] != 'T' || text[13] != ':' ||
      text[16] != ':') {
    return std::nullopt;
  }
  const auto year = Digits(text, 0, 4);
  const auto month = Digits(text, 5, 2);
  const auto day = Digits(text, 8, 2);
  const auto hour = Digits(text, 11, 2);
  const auto minute = Digits(text, 14, 2);
  const auto second = Digits(text, 17, 2);
  if (!year || !month || !day || !hour || !minute || !second) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year{*year},
                                         std::chrono::month{static_cast<unsigned>(*month)},
                                         std::chrono::day{static_cast<unsigned>(*day)}};
  if (!date.ok() || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
  const auto midnight = std::chrono::sys_days{date}.time_since_epoch();
  const auto moment =
      midnight + std::chrono::hours{*hour} + std::chrono::minutes{*minute} + std::chrono::seconds{*second};
  return std::chrono::duration_cast<std::chrono::seconds>(moment).count();
}

}  // namespace kestrum::drivesim
