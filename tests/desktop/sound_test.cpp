#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cstdlib>

#include "desktop/desktop_fixture.h"
#include "desktop/sound/speaker.h"
#include "desktop/sound/tone_samples.h"

namespace kestrum::test {
namespace {

class RecordingSpeaker : public Speaker {
 public:
  std::vector<std::vector<int>> played;  // pitches
  void Play(const std::vector<Tone>& tones) override {
    std::vector<int> pitches;
    for (const Tone& tone : tones) pitches.push_back(tone.frequency_hz);
    played.push_back(pitches);
  }
};

class SoundOnTheDesktop : public testing::Test {
 protected:
  QString Memory() const { return folder_.filePath(QStringLiteral("Kestrum.windows")); }

  ScriptedProgram program;
  RecordingSpeaker speaker;

 private:
  QTemporaryDir folder_;
};

TEST_F(SoundOnTheDesktop, WhatTheProgramWantsIsPlayedOnce) {
  Binder binder(program);
  Forms forms;
  const Windows windows(forms, binder, Memory(), &speaker);
  binder.Sync();
  EXPECT_TRUE(speaker.played.empty());
  binder.Enter([&] {
    forms.sound.tones = {{880, 100}, {0, 50}, {440, 100}};
    ++forms.sound.plays;
  });
  binder.Sync();
  ASSERT_EQ(speaker.played.size(), 1U);
  EXPECT_EQ(speaker.played[0], (std::vector<int>{880, 0, 440}));
}

TEST_F(SoundOnTheDesktop, TheChoiceIsRemembered) {
  {
    Binder binder(program);
    Forms forms;
    const Windows windows(forms, binder, Memory(), &speaker);
    EXPECT_EQ(forms.sound.mode, SoundMode::kOff);
    binder.Enter([&] { forms.sound.mode = SoundMode::kSignal; });
  }
  Binder binder(program);
  Forms forms;
  const Windows windows(forms, binder, Memory(), &speaker);
  EXPECT_EQ(forms.sound.mode, SoundMode::kSignal);
  EXPECT_TRUE(speaker.played.empty()) << "what is remembered makes no noise";
}

TEST_F(SoundOnTheDesktop, ASpoiledMemoryIsSilence) {
  for (const char* spoiled : {"[General]\nsound=7\n", "[General]\nsound=-1\n", "[General]\nsound=loud\n"}) {
    QFile file(Memory());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(spoiled);
    file.close();
    Binder binder(program);
    Forms forms;
    const Windows windows(forms, binder, Memory(), &speaker);
    EXPECT_EQ(forms.sound.mode, SoundMode::kOff) << spoiled;
  }
}

// Whatever this machine has: none of it waits, and nothing is left behind.
TEST(RealSpeaker, ReturnsAtOnceWithOrWithoutASoundCard) {
  for (int run = 0; run < 3; ++run) {
    const auto speaker = MakeSpeaker();
    for (int n = 0; n < 20; ++n) speaker->Play({{440, 50}, {0, 20}, {880, 50}});
    speaker->Play({});
  }
}

TEST(ToneSamples, SwellAndFadeAndKeepTheirPitch) {
  const auto samples = ToneSamples({{1000, 100}, {0, 50}}, 48000);
  ASSERT_EQ(samples.size(), 7200U);
  EXPECT_EQ(samples.front(), 0);
  EXPECT_TRUE(std::all_of(samples.begin() + 4800, samples.end(), [](int sample) { return sample == 0; }));
  const int loudest = *std::max_element(samples.begin(), samples.end());
  EXPECT_NEAR(loudest, 16383, 20);
  // No step is larger than a sine of this pitch has, so nothing clicks.
  for (std::size_t i = 1; i < samples.size(); ++i) {
    EXPECT_LE(std::abs(samples[i] - samples[i - 1]), 2300) << i;
  }
  const auto rises = [&] {
    int count = 0;
    for (std::size_t i = 1; i < 4800; ++i) count += samples[i - 1] <= 0 && samples[i] > 0 ? 1 : 0;
    return count;
  };
  EXPECT_EQ(rises(), 100);
}

TEST(ToneSamples, OddTonesAreShort) {
  EXPECT_TRUE(ToneSamples({}, 48000).empty());
  EXPECT_TRUE(ToneSamples({{440, 0}, {440, -5}}, 48000).empty());
  EXPECT_EQ(ToneSamples({{440, 1}}, 48000).size(), 48U);
}

}  // namespace
}  // namespace kestrum::test
