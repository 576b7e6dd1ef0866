#pragma once

namespace kestrum {

inline constexpr double kTwipsPerPixel = 15;

inline double ToPixels(double twips) {
  return twips / kTwipsPerPixel;
}
inline double ToTwips(double pixels) {
  return pixels * kTwipsPerPixel;
}

}  // namespace kestrum
