#include "ui/sounds.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "signal/conversion.h"

namespace kestrum {
namespace {

using Milliseconds = Sounds::Milliseconds;

constexpr Milliseconds kLastsFor{1000};     // what is over sooner is not worth a sound
constexpr Milliseconds kOverFor{10000};     // a trouble that returns sooner is still the same
constexpr Milliseconds kBetweenTones{200};  // fast readings must not run into each other
constexpr Milliseconds kAfterTrouble{800};

constexpr double kLowestHz = 220;
constexpr double kOctaves = 3;
constexpr int kSignalToneMs = 80;

std::vector<Tone> TroubleTones() {
  return {{880, 120}, {0, 60}, {587, 120}, {0, 60}, {392, 220}};
}

Tone SignalTone(int raw) {
  return {SignalPitch_hz(raw), kSignalToneMs};
}

}  // namespace

int SignalPitch_hz(int raw) {
  const double share = static_cast<double>(std::clamp(raw, 0, kTopOfMeter)) / kTopOfMeter;
  return static_cast<int>(std::lround(kLowestHz * std::exp2(kOctaves * share)));
}

void Sounds::Play(std::vector<Tone> tones) {
  sounder_.tones = std::move(tones);
  ++sounder_.plays;
}

void Sounds::NextMode() {
  switch (sounder_.mode) {
    case SoundMode::kOff:
      sounder_.mode = SoundMode::kTrouble;
      Play(TroubleTones());
      return;
    case SoundMode::kTrouble:
      sounder_.mode = SoundMode::kSignal;
      Play({SignalTone(0), {0, 60}, SignalTone(kTopOfMeter / 2), {0, 60}, SignalTone(kTopOfMeter)});
      return;
    case SoundMode::kSignal:
      sounder_.mode = SoundMode::kOff;
      Play({});
      return;
  }
}

// Whether this lamp has now shown trouble for long enough to be told of, and was not told of before.
bool Sounds::IsNew(Watched& lamp, Milliseconds now, LampState state) {
  if (state != LampState::kTrouble) {
    if (lamp.since && lamp.told) lamp.over = now;
    lamp.since.reset();
    if (lamp.over && now - *lamp.over >= kOverFor) lamp = {};
    return false;
  }
  if (!lamp.since) lamp.since = now;
  if (lamp.told || now - *lamp.since < kLastsFor) return false;
  lamp.told = true;
  return true;
}

void Sounds::LampsShow(Milliseconds now, const std::array<LampState, 3>& lamps) {
  bool is_new = false;
  for (std::size_t i = 0; i < lamps.size(); ++i) is_new |= IsNew(lamps_.at(i), now, lamps.at(i));
  if (!is_new || sounder_.mode == SoundMode::kOff) return;
  Play(TroubleTones());
  quiet_until_ = now + kAfterTrouble;
}

void Sounds::ReadingTaken(Milliseconds now, std::optional<int> raw) {
  if (sounder_.mode != SoundMode::kSignal || !raw) return;
  if (quiet_until_ && now < *quiet_until_) return;
  quiet_until_ = now + kBetweenTones;
  Play({SignalTone(*raw)});
}

}  // namespace kestrum
