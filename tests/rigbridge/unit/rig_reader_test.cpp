#include "rig_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>

#include "state_texts.h"
#include "support_process/waits.h"

namespace kestrum::rigbridge {
namespace {

using process::Eventually;
using testing::ElementsAre;

// What the scripted rig does; changed while the reader's thread uses it.
struct Script {
  std::mutex mutex;
  Outcome opening = Done{};
  Result<double> meter = 0.0;
  std::optional<double> frequency_hz = 7100000.0;
  std::optional<Refusal> refusal;
  std::vector<std::string> deeds;
  std::vector<double> attempts_s;  // when the meter was read in vain or the port opened
  int opened = 0;
  int closed = 0;
  std::atomic<bool> blocked = false;

  template <typename Change>
  void Set(Change change) {
    const std::lock_guard lock(mutex);
    change(*this);
  }
  std::vector<std::string> Deeds() {
    const std::lock_guard lock(mutex);
    return deeds;
  }
  int Opened() {
    const std::lock_guard lock(mutex);
    return opened;
  }
};

class ScriptedRig : public RigDriver {
 public:
  explicit ScriptedRig(Script& script) : script_(script) {}

  Outcome Open(const BridgeSettings& settings) override {
    const std::lock_guard lock(script_.mutex);
    ++script_.opened;
    script_.attempts_s.push_back(NowS());
    script_.deeds.push_back("open " + std::to_string(settings.model));
    return script_.opening;
  }
  void Close() override {
    const std::lock_guard lock(script_.mutex);
    ++script_.closed;
  }
  Result<double> ReadMeter() override {
    EXPECT_TRUE(Eventually([this] { return !script_.blocked; }));
    const std::lock_guard lock(script_.mutex);
    if (!script_.meter) script_.attempts_s.push_back(NowS());
    return script_.meter;
  }
  std::optional<double> ReadFrequencyHz() override {
    const std::lock_guard lock(script_.mutex);
    return script_.frequency_hz;
  }
  std::optional<Refusal> SetFrequencyHz(double hz) override {
    return Do("tune " + std::to_string(static_cast<long>(hz)));
  }
  std::optional<Refusal> SetMode(sets::Mode mode) override { return Do(std::string(sets::ModeName(mode))); }
  std::optional<Refusal> SetLock(bool locked) override { return Do(locked ? "lock" : "unlock"); }
  std::optional<Refusal> SetPower(bool on) override { return Do(on ? "on" : "off"); }

 private:
  std::optional<Refusal> Do(const std::string& deed) {
    const std::lock_guard lock(script_.mutex);
    script_.deeds.push_back(deed);
    return script_.refusal;
  }

  Script& script_;
};

class RigReaderTest : public testing::Test {
 protected:
  void Use(int model) {
    BridgeSettings settings;
    settings.model = model;
    reader.Use(settings);
  }
  bool Reaches(Phase phase) {
    return Eventually([&] { return reader.State().phase == phase; });
  }
  bool Reads(double value) {
    return Eventually([&] {
      const auto newest = reader.Newest();
      return newest && newest->value == value && IsFresh(*newest, NowS());
    });
  }
  bool Notes(const std::string& note) {
    return Eventually([&] {
      const auto notes = reader.State().notes;
      return std::find(notes.begin(), notes.end(), note) != notes.end();
    });
  }

  Script script;
  RigReader reader{[this] { return std::make_unique<ScriptedRig>(script); }};
};

TEST_F(RigReaderTest, DoesNothingWithoutARig) {
  EXPECT_EQ(reader.State().phase, Phase::kNoRig);
  Use(0);
  EXPECT_TRUE(reader.Stop(20));
  EXPECT_EQ(script.Opened(), 0);
}

TEST_F(RigReaderTest, KeepsTheNewestValue) {
  Use(5);
  ASSERT_TRUE(Reads(0));
  script.Set([](Script& s) { s.meter = -12.0; });
  EXPECT_TRUE(Reads(-12));
  EXPECT_EQ(reader.State().phase, Phase::kReading);
}

TEST_F(RigReaderTest, PassesOnWhatKestrumWants) {
  Use(5);
  reader.Wish({1420000, sets::Mode::kUsb, true, {}});
  ASSERT_TRUE(Eventually([&] { return script.Deeds().size() == 4; }));
  EXPECT_THAT(script.Deeds(), ElementsAre("open 5", "tune 14200000", "USB", "lock"));
  EXPECT_TRUE(Eventually([&] { return reader.State().dial.RigHz() == 7100000.0; }));
  EXPECT_TRUE(reader.State().dial.Elsewhere());  // the scripted rig does not follow
  EXPECT_TRUE(reader.State().notes.empty());
}

TEST_F(RigReaderTest, WhatTheRigCannotDoIsToldOnceAndTheMeterGoesOn) {
  script.refusal = Refusal{true, "its driver has no such command"};
  Use(5);
  for (int i = 0; i < 3; ++i) {
    reader.Wish({{}, {}, true, {}});
    ASSERT_TRUE(Eventually([&] { return script.Deeds().size() == static_cast<std::size_t>(2 + i); }));
  }
  const std::string note = "This rig cannot lock its dial from here: its driver has no such command.";
  EXPECT_TRUE(Notes(note));
  EXPECT_THAT(reader.State().notes, ElementsAre(note));
  script.Set([](Script& s) { s.meter = 7.0; });
  EXPECT_TRUE(Reads(7));
}

TEST_F(RigReaderTest, WhatFailedForTheMomentIsTriedOnceMore) {
  script.refusal = Refusal{false, "it said no"};
  Use(5);
  reader.Wish({1420000, {}, {}, {}});
  EXPECT_TRUE(Notes("The rig did not go to 14200.00 kHz: it said no."));
  EXPECT_THAT(script.Deeds(), ElementsAre("open 5", "tune 14200000", "tune 14200000"));
}

TEST_F(RigReaderTest, LostAndBackWithGrowingPauses) {
  Use(5);
  ASSERT_TRUE(Reads(0));
  script.Set([](Script& s) { s.meter = Fault{"", "The rig does not answer."}; });
  ASSERT_TRUE(Reaches(Phase::kTrouble));
  EXPECT_EQ(reader.State().trouble->reason, "The rig does not answer.");
  ASSERT_TRUE(Eventually([&] { return script.Opened() == 2; }));
  std::vector<double> attempts;
  script.Set([&](Script& s) {
    attempts = s.attempts_s;
    s.meter = 3.0;
  });
  // The first opening, three reads in vain, the second opening: half a second, one, two.
  ASSERT_GE(attempts.size(), 5U);
  EXPECT_GE(attempts[2] - attempts[1], 0.5);
  EXPECT_GE(attempts[3] - attempts[2], 1.0);
  EXPECT_GE(attempts[4] - attempts[3], 2.0);
  EXPECT_TRUE(Reads(3));
  EXPECT_EQ(reader.State().trouble.has_value(), false);
}

TEST_F(RigReaderTest, AWishDoesNotMakeALostRigSpin) {
  script.meter = Fault{"", "The rig does not answer."};
  Use(5);
  ASSERT_TRUE(Reaches(Phase::kTrouble));
  reader.Wish({1420000, {}, {}, {}});
  ASSERT_TRUE(Eventually([&] { return script.Opened() == 2; }));
  std::size_t attempts = 0;
  script.Set([&](Script& s) {
    attempts = s.attempts_s.size();
    s.meter = 0.0;
  });
  EXPECT_LE(attempts, 6U);
  // It gets through when the rig is back.
  EXPECT_TRUE(Eventually([&] { return script.Deeds().back() == "tune 14200000"; }));
}

TEST_F(RigReaderTest, PortThatCannotBeOpenedIsTriedAgain) {
  script.opening = Fault{"", "There is no port."};
  Use(5);
  ASSERT_TRUE(Reaches(Phase::kTrouble));
  EXPECT_EQ(reader.State().trouble->reason, "There is no port.");
  script.Set([](Script& s) { s.opening = Done{}; });
  EXPECT_TRUE(Reads(0));
}

TEST_F(RigReaderTest, OtherSettingsEndAPauseAndTheOldValueIsGone) {
  script.opening = Fault{"", "There is no port."};
  Use(5);
  ASSERT_TRUE(Eventually([&] { return script.Opened() == 4; }));  // the next pause is four seconds
  script.Set([](Script& s) { s.opening = Done{}; });
  Use(6);
  EXPECT_FALSE(reader.Newest().has_value());
  EXPECT_TRUE(Reads(0));
  EXPECT_EQ(script.Deeds().back(), "open 6");
}

TEST_F(RigReaderTest, KestrumsFrequencyOutlivesAChangeOfTheRig) {
  Use(5);
  reader.Wish({1420000, {}, {}, {}});
  ASSERT_TRUE(Eventually([&] { return reader.State().dial.SentHz().has_value(); }));
  Use(6);
  EXPECT_TRUE(Eventually([&] { return reader.State().dial.Elsewhere(); }));
}

TEST_F(RigReaderTest, OnlyTheThreadWaitsForARigThatBlocks) {
  Use(5);
  ASSERT_TRUE(Reads(0));
  script.blocked = true;
  // Everything here returns at once although the thread is stuck.
  reader.Wish({1420000, {}, {}, {}});
  EXPECT_TRUE(Eventually([&] { return !IsFresh(*reader.Newest(), NowS()); }));
  EXPECT_EQ(StateText(reader.State(), NowS()), "Waiting for the rig ...");
  EXPECT_FALSE(reader.Stop(0));
  script.blocked = false;
  EXPECT_TRUE(reader.Stop(20));
}

TEST_F(RigReaderTest, SwitchedOffItIsLeftAloneUntilSwitchedOn) {
  Use(5);
  ASSERT_TRUE(Reads(0));
  reader.Wish({{}, {}, {}, false});
  ASSERT_TRUE(Reaches(Phase::kSwitchedOff));
  EXPECT_FALSE(reader.Newest().has_value());
  reader.Wish({1420000, {}, {}, true});
  EXPECT_TRUE(Reads(0));
  EXPECT_TRUE(Eventually([&] { return script.Deeds().size() == 4; }));
  EXPECT_THAT(script.Deeds(), ElementsAre("open 5", "off", "on", "tune 14200000"));
}

TEST_F(RigReaderTest, ARigThatAnswersIsNotSwitchedOnAgain) {
  Use(5);
  ASSERT_TRUE(Reads(0));
  reader.Wish({{}, {}, {}, true});
  reader.Wish({{}, {}, false, {}});
  ASSERT_TRUE(Eventually([&] { return script.Deeds().size() == 2; }));
  EXPECT_THAT(script.Deeds(), ElementsAre("open 5", "unlock"));
}

TEST_F(RigReaderTest, ASilentRigIsSwitchedOn) {
  script.meter = Fault{"", "The rig does not answer."};
  Use(5);
  ASSERT_TRUE(Reaches(Phase::kTrouble));
  reader.Wish({{}, {}, {}, true});
  ASSERT_TRUE(Eventually([&] { return script.Deeds().size() >= 2; }));
  EXPECT_EQ(script.Deeds()[1], "on");
}

TEST_F(RigReaderTest, ARigThatCannotBeSwitchedOffIsReadOn) {
  Use(5);
  ASSERT_TRUE(Reads(0));
  script.Set([](Script& s) { s.refusal = Refusal{true, "its driver has no such command"}; });
  reader.Wish({{}, {}, {}, false});
  EXPECT_TRUE(Notes("This rig cannot be switched on and off from here: its driver has no such command."));
  script.Set([](Script& s) { s.meter = 9.0; });
  EXPECT_TRUE(Reads(9));
}

}  // namespace
}  // namespace kestrum::rigbridge
