#include "sets/rig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrum::sets {
namespace {

struct Row {
  Command command;
  Bytes reply;
  const char* meaning;
};

// The rows are a conversation: each meets the set as the one before has left it.
void Converse(Rig& rig, int meter, const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const Answer answer = rig.Handle(row.command, meter);
    EXPECT_EQ(HexText(answer.reply), HexText(row.reply)) << HexText(row.command);
    EXPECT_EQ(answer.meaning, row.meaning) << HexText(row.command);
  }
}

constexpr Command kReadFrequency = {0, 0, 0, 0, 0x03};
constexpr Command kReadStatus = {0, 0, 0, 0, 0xE7};
constexpr Command kReadTransmit = {0, 0, 0, 0, 0xF7};

TEST(Rig, Models) {
  EXPECT_EQ(ModelOf("FT897"), Model::kFT897);
  EXPECT_FALSE(ModelOf("FT1000").has_value());
  EXPECT_EQ(ModelName(Model::kFT840), "FT840");
}

TEST(Rig, MeterScales) {
  EXPECT_EQ(MakeRig(Model::kFT817, {})->MeterMax(), 15);
  EXPECT_EQ(MakeRig(Model::kFT857, {})->MeterMax(), 15);
  EXPECT_EQ(MakeRig(Model::kFT897, {})->MeterMax(), 15);
  EXPECT_EQ(MakeRig(Model::kFT840, {})->MeterMax(), 255);
  EXPECT_EQ(MakeRig(Model::kFT847, {})->MeterMax(), 31);
}

TEST(RigFt817, FrequencyAndMode) {
  const auto rig = MakeRig(Model::kFT817, {});
  Converse(*rig, 0,
           {{kReadFrequency, {0x00, 0x36, 0x30, 0x00, 0x00}, "read frequency and mode"},
            {{0x01, 0x42, 0x00, 0x00, 0x01}, {0x00}, "set frequency 14200.00 kHz"},
            {{0x01, 0, 0, 0, 0x07}, {0x00}, "set mode USB"},
            {kReadFrequency, {0x01, 0x42, 0x00, 0x00, 0x01}, "read frequency and mode"},
            {{0x01, 0x42, 0x0A, 0x00, 0x01}, {0x00}, "set frequency 14210.00 kHz"},
            {kReadFrequency, {0x01, 0x42, 0x10, 0x00, 0x01}, "read frequency and mode"},
            {{0x50, 0x00, 0x00, 0x00, 0x01}, {0x00}, "set frequency 500000.00 kHz, out of range, ignored"},
            {{0x88, 0, 0, 0, 0x07}, {0x00}, "set mode 88, unknown, ignored"},
            {kReadFrequency, {0x01, 0x42, 0x10, 0x00, 0x01}, "read frequency and mode"}});
}

TEST(RigFt817, SwitchesTellWhenTheyWereAsAsked) {
  const auto rig = MakeRig(Model::kFT817, {});
  Converse(*rig, 0,
           {{{0, 0, 0, 0, 0x80}, {0xF0}, "lock off"},
            {{0, 0, 0, 0, 0x00}, {0x00}, "lock on"},
            {{0, 0, 0, 0, 0x00}, {0xF0}, "lock on"},
            {{0, 0, 0, 0, 0x80}, {0x00}, "lock off"}});
}

TEST(RigFt817, AlwaysReceives) {
  Converse(*MakeRig(Model::kFT817, {}), 0, {{kReadTransmit, {0xFF}, "read transmit status"}});
}

TEST(RigFt817, ReceiveStatusIsOneByte) {
  const auto rig = MakeRig(Model::kFT817, {});
  Converse(*rig, 9, {{kReadStatus, {0x09}, "read receive status"}});
  Converse(*rig, 99, {{kReadStatus, {0x0F}, "read receive status"}});
  Converse(*rig, 0,
           {{kReadStatus, {0x00}, "read receive status"},
            {{0x08, 0, 0, 0, 0x07}, {0x00}, "set mode FM"},
            {kReadStatus, {0x80}, "read receive status"}});
  Converse(*rig, 3, {{kReadStatus, {0x03}, "read receive status"}});
}

TEST(RigFt817, TwoVfos) {
  const auto rig = MakeRig(Model::kFT817, {});
  Converse(*rig, 0,
           {{{0x00, 0x55, 0, 0, 0xBB}, {0x80, 0x00}, "read memory"},
            {{0, 0, 0, 0, 0x81}, {0x00}, "VFO B"},
            {{0x00, 0x55, 0, 0, 0xBB}, {0x81, 0x00}, "read memory"},
            {kReadFrequency, {0x01, 0x42, 0x00, 0x00, 0x01}, "read frequency and mode"},
            {{0, 0, 0, 0, 0x81}, {0x00}, "VFO A"},
            {kReadFrequency, {0x00, 0x36, 0x30, 0x00, 0x00}, "read frequency and mode"},
            {{0x00, 0x54, 0, 0, 0xBB}, {0x00, 0x80}, "read memory"},
            {{0x00, 0x7A, 0, 0, 0xBB}, {0x00, 0x00}, "read memory"}});
}

TEST(RigFt817, WhatItDoesNotKnowIsNotAnswered) {
  const auto rig = MakeRig(Model::kFT817, {});
  for (const int opcode :
       {0x02, 0x04, 0x05, 0x08, 0x09, 0x0B, 0x0C, 0x55, 0x82, 0x85, 0x88, 0xBD, 0xF5, 0xFF}) {
    Converse(*rig, 0, {{{0, 0, 0, 0, static_cast<std::uint8_t>(opcode)}, {}, "unknown command, ignored"}});
  }
}

TEST(RigFt817, WithoutAcknowledgesOnlyReadsAnswer) {
  RigSetup setup;
  setup.acknowledges = false;
  const auto rig = MakeRig(Model::kFT817, setup);
  Converse(*rig, 4,
           {{{0x01, 0x42, 0x00, 0x00, 0x01}, {}, "set frequency 14200.00 kHz"},
            {{0, 0, 0, 0, 0x00}, {}, "lock on"},
            {kReadStatus, {0x04}, "read receive status"}});
}

TEST(RigFt817, PowerNeedsAWakeUpAndAnOffSetIsDumb) {
  const auto rig = MakeRig(Model::kFT817, {});
  Converse(*rig, 5,
           {{{0, 0, 0, 0, 0x0F}, {0xF0}, "power on"},
            {{0, 0, 0, 0, 0x8F}, {0x00}, "power off"},
            {{0, 0, 0, 0, 0x0F}, {}, "wake-up, the set is off"},
            {kReadStatus, {}, "not heard, the set is off"},
            {{0, 0, 0, 0, 0x0F}, {0x00}, "power on"},
            {kReadStatus, {0x05}, "read receive status"}});
}

TEST(RigFt817, WakeUpOfASetThatIsOnLocksIt) {
  // Five zero bytes are the lock command to a set that is awake.
  const auto rig = MakeRig(Model::kFT817, {});
  Converse(*rig, 0, {{{0, 0, 0, 0, 0}, {0x00}, "lock on"}, {{0, 0, 0, 0, 0x0F}, {0xF0}, "power on"}});
}

TEST(RigFt817, StartsOffWhenAsked) {
  RigSetup setup;
  setup.powered = false;
  Converse(*MakeRig(Model::kFT817, setup), 5,
           {{{0, 0, 0, 0, 0}, {}, "wake-up, the set is off"}, {{0, 0, 0, 0, 0x0F}, {0x00}, "power on"}});
}

TEST(RigFt857, HasNoPowerCommandAndMoreModes) {
  for (const Model model : {Model::kFT857, Model::kFT897}) {
    RigSetup setup;
    setup.powered = false;
    const auto rig = MakeRig(model, setup);
    Converse(*rig, 5,
             {{{0, 0, 0, 0, 0x8F}, {}, "unknown command, ignored"},
              {{0x88, 0, 0, 0, 0x07}, {0x00}, "set mode FMN"},
              {kReadStatus, {0x05}, "read receive status"}});
  }
}

TEST(RigFt857, IsNotTunedByAFrameOfTheFt840) {
  // 0x0A is the tone command here; the logger's FT857 frequency frame therefore changes nothing on a real
  // set.
  Converse(*MakeRig(Model::kFT857, {}), 0,
           {{{0x00, 0x00, 0x42, 0x01, 0x0A}, {0x00}, "set CTCSS/DCS mode 00, ignored"},
            {{0x0A, 0x00, 0x42, 0x01, 0x0A}, {0x00}, "set CTCSS/DCS mode 0A, ignored"},
            {kReadFrequency, {0x00, 0x36, 0x30, 0x00, 0x00}, "read frequency and mode"}});
}

TEST(RigFt840, MeterIsFourTimesTheValueAndTheOpcode) {
  const auto rig = MakeRig(Model::kFT840, {});
  Converse(*rig, 200, {{kReadTransmit, {200, 200, 200, 200, 0xF7}, "read meter"}});
  Converse(*rig, 0, {{kReadTransmit, {0, 0, 0, 0, 0xF7}, "read meter"}});
  Converse(*rig, 300, {{kReadTransmit, {255, 255, 255, 255, 0xF7}, "read meter"}});
}

TEST(RigFt840, SettingsAreSilent) {
  const auto rig = MakeRig(Model::kFT840, {});
  Converse(*rig, 0,
           {{{0x00, 0x00, 0x42, 0x01, 0x0A}, {}, "set frequency 14200.00 kHz"},
            {{0x00, 0x0A, 0x42, 0x01, 0x0A}, {}, "set frequency 14210.00 kHz"},
            {{0x00, 0x00, 0x00, 0x04, 0x0A}, {}, "set frequency 40000.00 kHz, out of range, ignored"},
            {{0, 0, 0, 2, 0x0C}, {}, "set mode CW"},
            {{0, 0, 0, 9, 0x0C}, {}, "set mode, unknown, ignored"},
            {{0, 0, 0, 1, 0x04}, {}, "lock on"},
            {{0, 0, 0, 0, 0x04}, {}, "lock off"},
            {{0, 0, 0, 5, 0x0E}, {}, "set pacing"},
            {{0, 0, 0, 1, 0x0F}, {}, "unknown command, ignored"},
            {kReadStatus, {}, "unknown command, ignored"}});
}

TEST(RigFt840, StatusTellsBothVfos) {
  const auto rig = MakeRig(Model::kFT840, {});
  // 3630.00 kHz is 363000 = 0x0589F8, 14200.00 kHz is 1420000 = 0x15AAE0.
  Converse(*rig, 0,
           {{{0, 0, 0, 1, 0x10}, {}, "read status"},
            {{0, 0, 0, 3, 0x10},
             {0, 0x05, 0x89, 0xF8, 0, 0, 0, 0, 0, 0, 0x15, 0xAA, 0xE0, 0, 0, 1, 0, 0},
             "read status"},
            {{0, 0, 0, 1, 0x05}, {}, "VFO B"},
            {{0, 0, 0, 3, 0x0C}, {}, "set mode CWN"},
            {{0, 0, 0, 2, 0x10},
             {0, 0, 0x15, 0xAA, 0xE0, 0, 0, 2, 0x80, 0, 0, 0x05, 0x89, 0xF8, 0, 0, 0, 0, 0},
             "read status"},
            {{0, 0, 0, 0, 0x05}, {}, "VFO A"},
            {{0, 0, 0, 6, 0x0C}, {}, "set mode FM"},
            {{0, 0, 0, 2, 0x10},
             {0, 0, 0x05, 0x89, 0xF8, 0, 0, 4, 0, 0, 0, 0x15, 0xAA, 0xE0, 0, 0, 2, 0x80, 0},
             "read status"}});
}

TEST(RigFt840, Flags) {
  const auto rig = MakeRig(Model::kFT840, {});
  Converse(*rig, 0,
           {{{0, 0, 0, 0, 0xFA}, {0x80, 0, 0x00, 0x08, 0x41}, "read flags"},
            {{0, 0, 0, 1, 0x05}, {}, "VFO B"},
            {{0, 0, 0, 0, 0xFA}, {0xC0, 0, 0x00, 0x08, 0x41}, "read flags"}});
}

TEST(RigFt847, StatusIsFiveBytesWithTheOpcodeLast) {
  const auto rig = MakeRig(Model::kFT847, {});
  Converse(*rig, 17, {{kReadStatus, {17, 0, 0, 0, 0xE7}, "read receive status"}});
  Converse(*rig, 99, {{kReadStatus, {31, 0, 0, 0, 0xE7}, "read receive status"}});
}

TEST(RigFt847, CatSwitch) {
  const auto rig = MakeRig(Model::kFT847, {});
  Converse(*rig, 3,
           {{{0, 0, 0, 0, 0x80}, {}, "CAT off"},
            {kReadStatus, {}, "not heard, CAT is off"},
            {kReadFrequency, {}, "not heard, CAT is off"},
            {{0, 0, 0, 0, 0x00}, {}, "CAT on"},
            {kReadStatus, {3, 0, 0, 0, 0xE7}, "read receive status"}});
}

TEST(RigFt847, FrequencyAndMode) {
  const auto rig = MakeRig(Model::kFT847, {});
  Converse(*rig, 0,
           {{{0x14, 0x42, 0x50, 0x00, 0x01}, {}, "set frequency 144250.00 kHz"},
            {{0x82, 0, 0, 0, 0x07}, {}, "set mode CWN"},
            {kReadFrequency, {0x14, 0x42, 0x50, 0x00, 0x82}, "read frequency and mode"},
            {{0x09, 0x00, 0x00, 0x00, 0x01}, {}, "set frequency 90000.00 kHz, out of range, ignored"},
            {{0, 0, 0, 0, 0x13}, {}, "unknown command, ignored"},
            {kReadFrequency, {0x14, 0x42, 0x50, 0x00, 0x82}, "read frequency and mode"}});
}

TEST(RigFt847, ModeInTheFourthByteIsNotSeen) {
  // The logger's frame for FM; the set looks at the first byte and goes to LSB.
  Converse(*MakeRig(Model::kFT847, {}), 0,
           {{{0x08, 0, 0, 0, 0x07}, {}, "set mode FM"},
            {{0, 0, 0, 0x88, 0x07}, {}, "set mode LSB"},
            {{0x77, 0, 0, 0, 0x07}, {}, "set mode, unknown, ignored"}});
}

struct ChangeRow {
  Model model;
  Command command;
  Change change;
};

Change Tuned(std::uint32_t frequency_10hz) {
  return {frequency_10hz, {}, {}, {}};
}
Change Switched(Mode mode) {
  return {{}, mode, {}, {}};
}
Change Locked(bool locked) {
  return {{}, {}, locked, {}};
}
Change Powered(bool powered) {
  return {{}, {}, {}, powered};
}

TEST(Rig, TellsWhatACommandAsksFor) {
  const std::vector<ChangeRow> rows = {
      {Model::kFT840, {0x00, 0x0A, 0x42, 0x01, 0x0A}, Tuned(1421000)},
      {Model::kFT840, {0, 0, 0, 4, 0x0A}, {}},
      {Model::kFT840, {0, 0, 0, 0, 0x0C}, Switched(Mode::kLsb)},
      {Model::kFT840, {0, 0, 0, 1, 0x0C}, Switched(Mode::kUsb)},
      {Model::kFT840, {0, 0, 0, 2, 0x0C}, Switched(Mode::kCw)},
      {Model::kFT840, {0, 0, 0, 3, 0x0C}, Switched(Mode::kCwn)},
      {Model::kFT840, {0, 0, 0, 4, 0x0C}, Switched(Mode::kAm)},
      {Model::kFT840, {0, 0, 0, 5, 0x0C}, Switched(Mode::kAmn)},
      {Model::kFT840, {0, 0, 0, 6, 0x0C}, Switched(Mode::kFm)},
      {Model::kFT840, {0, 0, 0, 7, 0x0C}, {}},
      {Model::kFT840, {0, 0, 0, 1, 0x04}, Locked(true)},
      {Model::kFT840, {0, 0, 0, 0, 0x04}, Locked(false)},
      {Model::kFT840, kReadTransmit, {}},
      {Model::kFT817, {0x43, 0x97, 0x00, 0x00, 0x01}, Tuned(43970000)},
      {Model::kFT817, {0x50, 0x00, 0x00, 0x00, 0x01}, {}},
      {Model::kFT817, {3, 0, 0, 0, 0x07}, Switched(Mode::kCwr)},
      {Model::kFT817, {8, 0, 0, 0, 0x07}, Switched(Mode::kFm)},
      {Model::kFT817, {0x88, 0, 0, 0, 0x07}, {}},
      {Model::kFT817, {0, 0, 0, 0, 0x00}, Locked(true)},
      {Model::kFT817, {0, 0, 0, 0, 0x80}, Locked(false)},
      {Model::kFT817, {0, 0, 0, 0, 0x0F}, Powered(true)},
      {Model::kFT817, {0, 0, 0, 0, 0x8F}, Powered(false)},
      {Model::kFT857, {0, 0, 0, 0, 0x8F}, {}},
      {Model::kFT857, {0x88, 0, 0, 0, 0x07}, Switched(Mode::kFmn)},
      {Model::kFT847, {0x14, 0x42, 0x50, 0x00, 0x01}, Tuned(14425000)},
      {Model::kFT847, {0x82, 0, 0, 0, 0x07}, Switched(Mode::kCwn)},
  };
  for (const ChangeRow& row : rows) {
    const Change change = MakeRig(row.model, {})->Handle(row.command, 0).change;
    const std::string command = std::string(ModelName(row.model)) + " " + HexText(row.command);
    EXPECT_EQ(change.frequency_10hz, row.change.frequency_10hz) << command;
    EXPECT_EQ(change.mode, row.change.mode) << command;
    EXPECT_EQ(change.locked, row.change.locked) << command;
    EXPECT_EQ(change.powered, row.change.powered) << command;
  }
}

TEST(Rig, WithoutAMeterOnlyItsReadIsNotAnswered) {
  for (const auto& [model, read] : {std::pair{Model::kFT817, kReadStatus},
                                    {Model::kFT840, kReadTransmit},
                                    {Model::kFT847, kReadStatus}}) {
    const auto rig = MakeRig(model, {});
    EXPECT_TRUE(rig->Handle(read, std::nullopt).reply.empty()) << ModelName(model);
    EXPECT_FALSE(rig->Handle(read, 0).reply.empty()) << ModelName(model);
  }
  EXPECT_EQ(MakeRig(Model::kFT817, {})->Handle(kReadFrequency, std::nullopt).reply.size(), 5U);
}

TEST(RigFt817, OneThatDoesNotSleepHearsEverythingWhileOff) {
  RigSetup setup;
  setup.sleeps = false;
  setup.acknowledges = false;
  Converse(*MakeRig(Model::kFT817, setup), 5,
           {{{0, 0, 0, 0, 0x8F}, {}, "power off"},
            {kReadStatus, {0x05}, "read receive status"},
            {{0, 0, 0, 0, 0}, {}, "lock on"},
            {{0, 0, 0, 0, 0x0F}, {}, "power on"}});
}

TEST(Rig, ModeNames) {
  EXPECT_EQ(ModeName(Mode::kLsb), "LSB");
  EXPECT_EQ(ModeName(Mode::kCwnr), "CWNR");
  EXPECT_EQ(ModeName(Mode::kPkt), "PKT");
}

}  // namespace
}  // namespace kestrum::sets
