#include "state_texts.h"

#include <gtest/gtest.h>

namespace kestrum::rigbridge {
namespace {

RigState In(Phase phase) {
  RigState state;
  state.phase = phase;
  return state;
}

TEST(StateTexts, State) {
  EXPECT_EQ(StateText(In(Phase::kNoRig), 100), "Choose your rig.");
  EXPECT_EQ(StateText(In(Phase::kOpening), 100), "Calling the rig ...");
  EXPECT_EQ(StateText(In(Phase::kSwitchedOff), 100), "Kestrum has switched the rig off.");
  RigState reading = In(Phase::kReading);
  reading.reading = Reading{0, 99.5};
  EXPECT_EQ(StateText(reading, 100), "Reading the rig.");
  EXPECT_EQ(StateText(reading, 101), "Waiting for the rig ...");
  RigState trouble = In(Phase::kTrouble);
  trouble.trouble = Fault{"", "The rig does not answer."};
  trouble.next_try_s = 103.2;
  EXPECT_EQ(StateText(trouble, 100), "The rig does not answer. Next attempt in 4 s.");
  EXPECT_EQ(StateText(trouble, 104), "The rig does not answer. Trying again ...");
}

TEST(StateTexts, Reading) {
  RigState state = In(Phase::kReading);
  EXPECT_EQ(ReadingText(state, {}, 100), "no value");
  struct Row {
    double db;
    const char* text;
  };
  for (const Row& row : {Row{10, "+10 dB to S9, raw 162"}, Row{0, "+0 dB to S9, raw 128"},
                         Row{-0.2, "+0 dB to S9, raw 127"}, Row{-12, "-12 dB to S9, raw 72"}}) {
    state.reading = rigbridge::Reading{row.db, 100};
    EXPECT_EQ(ReadingText(state, {}, 100.5), row.text);
  }
  EXPECT_EQ(ReadingText(state, {}, 101.5), "no value");
  BridgeSettings settings;
  settings.act_as = sets::Model::kFT817;
  EXPECT_EQ(ReadingText(state, settings, 100), "-12 dB to S9, raw 64");
  settings.act_as = sets::Model::kFT840;
  settings.meter.source = MeterSource::kRaw;
  state.reading = rigbridge::Reading{117, 100};
  EXPECT_EQ(ReadingText(state, settings, 100), "meter 117, raw 117");
}

TEST(StateTexts, Frequency) {
  DialWatch dial;
  EXPECT_EQ(FrequencyText(dial), "not known");
  dial.Read(7100000);
  EXPECT_EQ(FrequencyText(dial), "7100.00 kHz");
  dial.Sent(14200000, DialWatch::Taken::kYes);
  EXPECT_EQ(FrequencyText(dial), "Kestrum wants 14200.00 kHz");
  dial.Read(14200000);
  EXPECT_EQ(FrequencyText(dial), "14200.00 kHz");
  dial.Read(14210000);
  EXPECT_EQ(FrequencyText(dial),
            "The rig is on 14210.00 kHz, but Kestrum logs 14200.00 kHz: set the frequency in Kestrum again.");
}

TEST(StateTexts, Link) {
  BridgeSettings settings;
  EXPECT_EQ(LinkText(settings, std::nullopt, 100),
            "Waiting for Kestrum: choose FT840 and Com1 in Rig + Comport.");
  EXPECT_EQ(LinkText(settings, 99, 100), "Kestrum reads an FT840 on com1.");
  settings.link = "com3";
  settings.act_as = sets::Model::kFT817;
  EXPECT_EQ(LinkText(settings, 90, 100), "Kestrum has last asked on com3 10 s ago.");
}

}  // namespace
}  // namespace kestrum::rigbridge
