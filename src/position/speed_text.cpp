#include "position/speed_text.h"

#include "text/number_text.h"
#include "text/single.h"

namespace kestrum {
namespace {

constexpr double kKmhPerKnot = 1.852;
constexpr double kMetresPerSecondPerKnot = 0.514444444444444;
constexpr double kMphPerKnot = 1.15102548166563;

std::string OneDecimal(float value) {
  return NumberTextSingle(ToSingle(RoundHalfEven(value, 1)));
}

}  // namespace

std::string SpeedText(std::string_view knots) {
  const float speed = ToSingle(Val(knots));
  const float kmh = ToSingle(speed * kKmhPerKnot);
  const float metres_per_second = ToSingle(speed * kMetresPerSecondPerKnot);
  const float mph = ToSingle(speed * kMphPerKnot);
  // Kept on purpose: " km" for the speed and the two blanks before the miles; the tool tip has always read
  // so.
  return OneDecimal(speed) + " knots," + OneDecimal(kmh) + " km" + "," + OneDecimal(metres_per_second) +
         " m/s, " + "and " + OneDecimal(mph) + " mph ";
}

}  // namespace kestrum
