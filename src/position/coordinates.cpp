#include "position/coordinates.h"

#include <algorithm>

#include "text/number_text.h"
#include "text/single.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr double kMetresPerFoot = 0.3048;

// What tells a latitude from a longitude. Places count from 1.
struct Layout {
  std::string_view hemispheres;
  std::size_t point_place;
  std::size_t length;
  double largest;  // packed ddmm.mm number, inclusive
};

constexpr Layout kLatitude = {"NS", 5, 8, 9000};
constexpr Layout kLongitude = {"EW", 6, 9, 18000};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Digits, points (a comma is one too) and the first hemisphere letter; everything else is dropped.
std::string KeepCoordinateCharacters(std::string_view text, std::string_view hemispheres) {
  std::string kept;
  bool has_letter = false;
  for (const char c : text) {
    if (IsDigit(c) || c == '.') {
      kept += c;
    } else if (c == ',') {
      kept += '.';
    } else if (hemispheres.find(c) != std::string_view::npos && !has_letter) {
      kept += c;
      has_letter = true;
    }
  }
  return kept;
}

bool LastIsOneOf(std::string_view text, std::string_view letters) {
  return !text.empty() && letters.find(text.back()) != std::string_view::npos;
}

std::string PieceBefore(std::string_view text, std::size_t end, std::size_t longest) {
  const std::size_t length = std::min(end, longest);
  return std::string(text.substr(end - length, length));
}

}  // namespace

std::string CheckLatLong(std::string_view text, std::string_view kind) {
  const std::string axis = Upper(Trim(kind));
  const bool latitude = axis == "LAT";
  if (text.empty() || (!latitude && axis != "LONG")) return {};
  const Layout& layout = latitude ? kLatitude : kLongitude;

  std::string result = KeepCoordinateCharacters(Upper(text), layout.hemispheres);
  if (!LastIsOneOf(result, "NSEW")) return {};

  const auto points = std::count(result.begin(), result.end(), '.');
  if (points < 1 || points > 2) return {};
  if (points == 2) result.erase(result.find('.'), 1);  // degrees typed with a separator: 51.57.00N

  const std::size_t place = result.find('.') + 1;
  if (place < layout.point_place) result.insert(0, layout.point_place - place, '0');
  if (result.size() != layout.length) return {};
  if (result[layout.length - 4] != '.') return {};
  if (result[layout.length - 6] > '5') return {};  // tens of the minutes
  return Val(result) <= layout.largest ? result : std::string();
}

double LatLongToDeg(std::string_view text) {
  const auto point = text.find('.');
  if (point == std::string_view::npos) return 0;
  const double degrees = point > 2 ? Val(text.substr(0, point - 2)) : 0;
  const double minutes = Val(PieceBefore(text, point, 2)) / 60;
  const double hundredths = Val(text.substr(point + 1, 2)) / 60 * 0.01;
  const std::string decimal = ShortNumberSingle(ToSingle(degrees + minutes + hundredths));
  const bool south_or_west = LastIsOneOf(text, "SW");
  return Val((south_or_west ? "-" : "") + decimal);
}

std::string FeetToMetres(std::string_view feet) {
  return WithLeadingZero(ShortNumber(RoundHalfEven(Val(feet) * kMetresPerFoot, 1)));
}

std::string HeightText(std::string_view typed) {
  const std::string height = Trim(typed);
  return height.empty() || ContainsText(height, "m") ? height : height + " m";
}

}  // namespace kestrum
