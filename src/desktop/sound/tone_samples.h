#pragma once

#include <cstdint>
#include <vector>

#include "forms/indicators.h"

namespace kestrum {

// One channel of samples at `rate_hz`: sines at half of the full strength, swelling and fading within 6 ms so
// that nothing clicks; a pitch of 0 is a pause.
std::vector<std::int16_t> ToneSamples(const std::vector<Tone>& tones, int rate_hz);

}  // namespace kestrum
