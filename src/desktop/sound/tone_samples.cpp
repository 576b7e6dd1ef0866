#include "desktop/sound/tone_samples.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace kestrum {
namespace {

constexpr double kStrength = 0.5 * INT16_MAX;
constexpr int kEdgeMs = 6;

}  // namespace

std::vector<std::int16_t> ToneSamples(const std::vector<Tone>& tones, int rate_hz) {
  std::vector<std::int16_t> samples;
  for (const Tone& tone : tones) {
    const int count = std::max(0, tone.duration_ms) * rate_hz / 1000;
    const double edge = std::max(1.0, std::min(kEdgeMs * rate_hz / 1000.0, count / 2.0));
    for (int i = 0; i < count; ++i) {
      const double swell = std::min(1.0, std::min(i, count - 1 - i) / edge);
      const double phase = 2 * std::numbers::pi * tone.frequency_hz * i / rate_hz;
      samples.push_back(static_cast<std::int16_t>(std::lround(kStrength * swell * std::sin(phase))));
    }
  }
  return samples;
}

}  // namespace kestrum
