#pragma once

#include <algorithm>
#include <limits>

namespace kestrum {

// The nearest single-precision number; what no single can hold becomes the largest one.
inline float ToSingle(double value) {
  constexpr double kLargest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(value, -kLargest, kLargest));
}

}  // namespace kestrum
