#pragma once

#include <memory>
#include <vector>

#include "forms/indicators.h"

namespace kestrum {

// Plays tones beside the program.
class Speaker {
 public:
  Speaker() = default;
  virtual ~Speaker() = default;
  Speaker(const Speaker&) = delete;
  Speaker& operator=(const Speaker&) = delete;

  // Plays these instead of what still sounds; no tones end it. Returns at once. Where there is nothing to
  // play on, nothing is heard and nothing is told.
  virtual void Play(const std::vector<Tone>& tones) = 0;
};

// The one of this build: a build without a sound library has one that is silent.
std::unique_ptr<Speaker> MakeSpeaker();

}  // namespace kestrum
