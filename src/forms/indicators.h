#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "forms/control.h"

// Controls that tell a driver at a glance how things stand.
namespace kestrum {

enum class LampState { kOff, kGood, kNote, kTrouble };

// What a lamp says: a colour and a shape by its state, two words to be read from a metre, and a line below.
struct LampText {
  LampState state = LampState::kOff;
  std::string words;
  std::string detail;
  double fill = 0;     // 0 to 1: how far something has come
  std::string advice;  // tool tip: what helps, or more of it
  bool operator==(const LampText&) const = default;
};

struct Lamp : Control {
  using Control::Control;
  LampText says;
  Handler click;
};

// What is heard: nothing, trouble alone, or the strength of the signal too.
enum class SoundMode { kOff, kTrouble, kSignal };

struct Tone {
  int frequency_hz = 0;  // 0 for a pause
  int duration_ms = 0;
};

// Tones instead of paint.
struct Sounder {
  SoundMode mode = SoundMode::kOff;
  std::vector<Tone> tones;  // to be played instead of what still sounds
  unsigned plays = 0;       // rises whenever tones are to be played
};

// The last five minutes of the signal, one column a second.
struct StripChart : Control {
  using Control::Control;
  int maximum = 255;
  int line = -1;  // raw value of the marked line (S9); -1 for none
  std::vector<std::int16_t>
      columns;            // oldest first; the highest raw value of a second, -1 where none was measured
  unsigned revision = 0;  // rises with every change of the columns
};

}  // namespace kestrum
