#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "position/coordinates.h"
#include "position/great_circle.h"
#include "position/needle.h"
#include "position/speed_text.h"
#include "support/fuzz.h"
#include "text/number_text.h"
#include "text/text.h"

// The input is one text, or two with "|" between them; each goes through everything that reads a text of the
// GPS reader or of a position dialog.
namespace kestrum::fuzz {
namespace {

bool AllDigits(std::string_view text) {
  return MadeOf(text, "0123456789");
}

struct Kind {
  const char* name;
  std::size_t length;
  double largest_deg;
  std::string_view letters;
};

void CheckCoordinate(const std::string& text, const Kind& kind) {
  const std::string result = CheckLatLong(text, kind.name);
  if (result.empty()) return;
  Require(result.size() == kind.length, "length of a coordinate", result);
  Require(CheckLatLong(result, kind.name) == result, "CheckLatLong of its own result is its own result",
          result);
  const std::size_t point = kind.length - 4;
  const bool form = AllDigits(result.substr(0, point)) && result[point] == '.' &&
                    AllDigits(result.substr(point + 1, 2)) &&
                    kind.letters.find(result.back()) != std::string_view::npos;
  Require(form, "form of a coordinate", result);
  const double degrees = std::stod(result.substr(0, point - 2));
  const double minutes = std::stod(result.substr(point - 2, 5));
  Require(minutes < 60, "minutes of a coordinate", result);
  const bool negative = result.back() == kind.letters[1];
  const double expected = (negative ? -1 : 1) * (degrees + minutes / 60);
  const double value = LatLongToDeg(result);
  // A single-precision number as a text of seven digits.
  const double resolution = degrees < 100 ? 1e-5 : 6e-5;
  Require(std::fabs(value - expected) < resolution, "a coordinate in degrees", result);
  Require(std::fabs(value) <= kind.largest_deg, "a coordinate lies on the globe", result);
}

void CheckNumbers(const std::string& text) {
  const double degrees = LatLongToDeg(text);
  Require(std::isfinite(degrees) && std::fabs(degrees) <= std::numeric_limits<float>::max() * (1 + 1e-6),
          "degrees are finite", text);

  const std::string metres = FeetToMetres(text);
  Require(!metres.empty() && MadeOf(metres, kNumberCharacters), "metres are a plain number", metres);
  Require(!metres.starts_with(".") && !metres.starts_with("-."), "metres have a digit before the point",
          metres);
  const double expected = Val(text) * 0.3048;
  Require(std::fabs(Val(metres) - expected) <= 0.0501 + std::fabs(expected) * 1e-12, "feet as metres",
          metres);

  const std::string height = HeightText(text);
  Require(HeightText(height) == height, "HeightText of its own result is its own result", height);
  Require(height.empty() == Trim(text).empty(), "only an empty height stays empty", height);
  Require(height.empty() || ContainsText(height, "m"), "a height has its unit", height);

  const std::string speed = SpeedText(text);
  Require(speed.ends_with(" mph ") && MadeOf(speed, "0123456789.- knots,km/sandph"), "four speeds", speed);
}

void CheckCompass(const std::string& text) {
  constexpr std::array<std::string_view, 10> kWords = {"N ",  "NE ", "E ",  "ES ", "S ",
                                                       "SW ", "W ",  "NW ", "? ",  ""};
  const std::string word = CompassText(text);
  Require(!word.empty() && std::find(kWords.begin(), kWords.end(), word) != kWords.end(), "a compass word",
          word);

  const int bearing = static_cast<int>(Mix(text) % 362) - 1;
  const std::string pelorus = PelorusText(text, bearing);
  Require(pelorus.size() >= 3 && MadeOf(pelorus, "0123456789-"), "a pelorus text", pelorus);
  const double compass = Val(text);
  const bool plausible = compass >= 0 && compass <= 360 && bearing >= 0;
  const double heading = Val(pelorus);
  Require(!plausible || text == "32768" || (heading >= 0 && heading <= 360), "a pelorus on the rose",
          pelorus);

  for (const Shape& shape : NeedleShapes(NeedleOf(text), 3000, 1500)) {
    for (const double place : {shape.x1, shape.x2, shape.y1, shape.y2, shape.radius})
      Require(place >= 0 && place <= 3000, "the needle stays in the picture", text);
  }
}

void CheckOpticalDistance(const std::string& tx, const std::string& rx) {
  const std::string text = OpticalDistanceText(tx, rx);
  if (text == "??.?") return;
  Require(text.size() >= 2 && MadeOf(text, "0123456789."), "an optical distance", text);
  Require(text[text.size() - 2] == '.', "an optical distance has one decimal", text);
  // Only the transmitter's height is typed, so only there a comma is a point.
  if (ContainsText(rx, "32768") || ContainsText(tx + rx, ",")) return;
  Require(OpticalDistanceText(rx, tx) == text, "the optical distance is the same both ways", text);
}

}  // namespace
}  // namespace kestrum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum::fuzz;
  const auto texts = Pieces(Text(data, size), 2);
  for (const auto& text : texts) {
    CheckCoordinate(text, {"LAT", 8, 90, "NS"});
    CheckCoordinate(text, {"LONG", 9, 180, "EW"});
    CheckNumbers(text);
    CheckCompass(text);
  }
  CheckOpticalDistance(texts.front(), texts.back());
  return 0;
}
