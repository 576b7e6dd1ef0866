#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>

#include "forms/indicators.h"

namespace kestrum {

// What is heard while the eyes are on the road: trouble, told once, and if wanted a tone that rises with the
// signal. Decides; the desktop plays.
class Sounds {
 public:
  using Milliseconds = std::chrono::milliseconds;

  explicit Sounds(Sounder& sounder) : sounder_(sounder) {}

  // Off, trouble, trouble and signal, and around again; what is chosen gives a sample of itself.
  void NextMode();
  // The lamps as they are shown at `now`, a time that only runs forward.
  void LampsShow(Milliseconds now, const std::array<LampState, 3>& lamps);
  // A reading was taken; nothing for one without an answer.
  void ReadingTaken(Milliseconds now, std::optional<int> raw);

 private:
  struct Watched {
    std::optional<Milliseconds> since;  // of the trouble that is shown
    std::optional<Milliseconds> over;   // when the trouble that was told ended
    bool told = false;
  };
  static bool IsNew(Watched& lamp, Milliseconds now, LampState state);
  void Play(std::vector<Tone> tones);

  Sounder& sounder_;
  std::array<Watched, 3> lamps_;
  std::optional<Milliseconds> quiet_until_;  // for the tone of the signal
};

// Pitch of a raw value 0 to 255: three octaves from 220 Hz on, equal steps of the meter being equal
// intervals.
int SignalPitch_hz(int raw);

}  // namespace kestrum
