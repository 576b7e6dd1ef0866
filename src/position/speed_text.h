#pragma once

#include <string>
#include <string_view>

namespace kestrum {

// A speed in knots in four units, e.g. " 10 knots, 18.5 km, 5.1 m/s, and  11.5 mph ".
std::string SpeedText(std::string_view knots);

}  // namespace kestrum
