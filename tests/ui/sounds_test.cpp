#include "ui/sounds.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrum {
namespace {

using std::chrono::milliseconds;

constexpr LampState kWell = LampState::kGood;
constexpr LampState kBad = LampState::kTrouble;

class SoundsTest : public testing::Test {
 protected:
  void Choose(SoundMode mode) {
    sounder.mode = mode;
    heard_ = sounder.plays;
  }
  // What was played since the last call: the pitches of its tones, pauses left out.
  std::string Heard() {
    if (sounder.plays == heard_) return "nothing";
    heard_ = sounder.plays;
    std::string pitches;
    for (const Tone& tone : sounder.tones) {
      if (tone.frequency_hz > 0) {
        pitches += (pitches.empty() ? "" : " ") + std::to_string(tone.frequency_hz);
      }
    }
    return pitches;
  }
  void Lamps(int at_ms, LampState log, LampState gps, LampState rig) {
    sounds.LampsShow(milliseconds(at_ms), {log, gps, rig});
  }

  Sounder sounder;
  Sounds sounds{sounder};

 private:
  unsigned heard_ = 0;
};

constexpr const char* kTrouble = "880 587 392";

TEST_F(SoundsTest, IsSilentUnlessChosen) {
  EXPECT_EQ(sounder.mode, SoundMode::kOff);
  for (int at_ms = 0; at_ms < 5000; at_ms += 500) {
    Lamps(at_ms, kBad, kBad, kBad);
    sounds.ReadingTaken(milliseconds(at_ms), 100);
  }
  EXPECT_EQ(Heard(), "nothing");
}

TEST_F(SoundsTest, EachModeGivesASampleOfItself) {
  sounds.NextMode();
  EXPECT_EQ(sounder.mode, SoundMode::kTrouble);
  EXPECT_EQ(Heard(), kTrouble);
  sounds.NextMode();
  EXPECT_EQ(sounder.mode, SoundMode::kSignal);
  EXPECT_EQ(Heard(), "220 620 1760");
  sounds.NextMode();
  EXPECT_EQ(sounder.mode, SoundMode::kOff);
  EXPECT_EQ(Heard(), "") << "what still sounds is cut off";
}

TEST_F(SoundsTest, TellsEachTroubleOnce) {
  struct Look {
    int at_ms;
    LampState log, gps, rig;
    const char* heard;
  };
  const Look looks[] = {
      {0, kWell, kWell, kBad, "nothing"},
      {900, kWell, kWell, kBad, "nothing"},
      {1000, kWell, kWell, kBad, kTrouble},
      {2000, kWell, kWell, kBad, "nothing"},
      {60000, kWell, kWell, kBad, "nothing"},
      {61000, kWell, kBad, kBad, "nothing"},
      {62000, kWell, kBad, kBad, kTrouble},
      {63000, kBad, kBad, kBad, "nothing"},
      {64000, kBad, kBad, kBad, kTrouble},
      {65000, kWell, kWell, kWell, "nothing"},
      {66000, kWell, kWell, kBad, "nothing"},
      {70000, kWell, kWell, kBad, "nothing"},
      {71000, kWell, kWell, kWell, "nothing"},
      {81000, kWell, kWell, kWell, "nothing"},
      {90000, kWell, kWell, kBad, "nothing"},
      {90500, kWell, kWell, kWell, "nothing"},
      {91000, kWell, kWell, kBad, "nothing"},
      {92000, kWell, kWell, kBad, kTrouble},
      {93000, LampState::kNote, kWell, kBad, "nothing"},
  };
  Choose(SoundMode::kTrouble);
  for (const Look& look : looks) {
    Lamps(look.at_ms, look.log, look.gps, look.rig);
    EXPECT_EQ(Heard(), look.heard) << look.at_ms;
  }
}

TEST_F(SoundsTest, ATroubleThatWasThereBeforeIsNotToldAgainWhenSoundIsChosen) {
  Lamps(0, kWell, kBad, kWell);
  Lamps(5000, kWell, kBad, kWell);
  Choose(SoundMode::kTrouble);
  Lamps(6000, kWell, kBad, kWell);
  EXPECT_EQ(Heard(), "nothing");
}

TEST_F(SoundsTest, TheToneFollowsTheSignal) {
  Choose(SoundMode::kSignal);
  sounds.ReadingTaken(milliseconds(0), 0);
  EXPECT_EQ(Heard(), "220");
  sounds.ReadingTaken(milliseconds(1000), 148);
  EXPECT_EQ(Heard(), "735");
  sounds.ReadingTaken(milliseconds(2000), 255);
  EXPECT_EQ(Heard(), "1760");
  sounds.ReadingTaken(milliseconds(3000), std::nullopt);
  EXPECT_EQ(Heard(), "nothing") << "no answer, no tone";
}

TEST_F(SoundsTest, FastReadingsDoNotRunIntoEachOther) {
  Choose(SoundMode::kSignal);
  int tones = 0;
  for (int at_ms = 0; at_ms < 2000; at_ms += 50) {
    sounds.ReadingTaken(milliseconds(at_ms), 100);
    if (Heard() != "nothing") ++tones;
  }
  EXPECT_EQ(tones, 10);
}

TEST_F(SoundsTest, TroubleIsNotCutOffByTheSignal) {
  Choose(SoundMode::kSignal);
  Lamps(0, kWell, kBad, kWell);
  Lamps(1000, kWell, kBad, kWell);
  EXPECT_EQ(Heard(), kTrouble);
  sounds.ReadingTaken(milliseconds(1700), 100);
  EXPECT_EQ(Heard(), "nothing");
  sounds.ReadingTaken(milliseconds(1800), 100);
  EXPECT_EQ(Heard(), "497");
}

TEST_F(SoundsTest, ModeTroubleHasNoToneOfTheSignal) {
  Choose(SoundMode::kTrouble);
  sounds.ReadingTaken(milliseconds(0), 100);
  EXPECT_EQ(Heard(), "nothing");
}

TEST(SignalPitch, RisesWithEveryStepAndStaysInItsRange) {
  EXPECT_EQ(SignalPitch_hz(-5), 220);
  EXPECT_EQ(SignalPitch_hz(85), 440);
  EXPECT_EQ(SignalPitch_hz(170), 880);
  EXPECT_EQ(SignalPitch_hz(999), 1760);
  for (int raw = 1; raw <= 255; ++raw) EXPECT_GT(SignalPitch_hz(raw), SignalPitch_hz(raw - 1)) << raw;
}

}  // namespace
}  // namespace kestrum
