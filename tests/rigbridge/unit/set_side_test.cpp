#include "set_side.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrum::rigbridge {
namespace {

using sets::Bytes;
using sets::Model;
using testing::ElementsAre;

const Bytes kReadMeter = {0, 0, 0, 0, 0xF7};
const Bytes kReadStatus = {0, 0, 0, 0, 0xE7};
const Bytes kLock = {0, 0, 0, 0, 0x00};
const Bytes kUnlock = {0, 0, 0, 0, 0x80};
const Bytes kPowerOn = {0, 0, 0, 0, 0x0F};
const Bytes kPowerOff = {0, 0, 0, 0, 0x8F};

BridgeSettings As(Model model) {
  BridgeSettings settings;
  settings.act_as = model;
  return settings;
}

TEST(SetSide, AnswersFromTheNewestValue) {
  SetSide ft840(As(Model::kFT840));
  EXPECT_THAT(ft840.Receive(kReadMeter, Reading{0, 10}, 10.9), ElementsAre(128, 128, 128, 128, 0xF7));
  EXPECT_THAT(ft840.Receive(kReadMeter, Reading{10, 11}, 11), ElementsAre(162, 162, 162, 162, 0xF7));
  SetSide ft817(As(Model::kFT817));
  EXPECT_THAT(ft817.Receive(kReadStatus, Reading{0, 10}, 10), ElementsAre(8));
}

TEST(SetSide, AnOldValueIsNoValue) {
  for (const Model model : {Model::kFT840, Model::kFT817}) {
    SetSide set(As(model));
    const Bytes& read = model == Model::kFT840 ? kReadMeter : kReadStatus;
    EXPECT_THAT(set.Receive(read, std::nullopt, 10), ElementsAre());
    EXPECT_THAT(set.Receive(read, Reading{0, 10}, 11.01), ElementsAre());
    EXPECT_FALSE(set.Receive(read, Reading{0, 10}, 11).empty());
  }
}

TEST(SetSide, UsesTheScaleOfTheSettings) {
  BridgeSettings settings;
  settings.meter.linear = LinearScale{-120, 0};
  SetSide set(settings);
  EXPECT_THAT(set.Receive(kReadMeter, Reading{-60, 1}, 1), ElementsAre(128, 128, 128, 128, 0xF7));
}

TEST(SetSide, CommandsMayComeInPieces) {
  SetSide set(As(Model::kFT840));
  EXPECT_THAT(set.Receive(Bytes{0, 0}, Reading{0, 1}, 1), ElementsAre());
  EXPECT_THAT(set.Receive(Bytes{0, 0, 0xF7, 1}, Reading{0, 1}, 1.1), ElementsAre(128, 128, 128, 128, 0xF7));
  // The byte that was left over is forgotten.
  EXPECT_THAT(set.Receive(kReadMeter, Reading{0, 1}, 1.5), ElementsAre(128, 128, 128, 128, 0xF7));
}

TEST(SetSide, HangingUpForgetsHalfACommand) {
  SetSide set(As(Model::kFT840));
  set.Receive(Bytes{0, 0, 0}, Reading{0, 1}, 1);
  set.HangUp();
  EXPECT_THAT(set.Receive(kReadMeter, Reading{0, 1}, 1.1), ElementsAre(128, 128, 128, 128, 0xF7));
}

TEST(SetSide, SettingsAreCollectedAndNotAcknowledged) {
  SetSide set(As(Model::kFT817));
  EXPECT_THAT(set.Receive(Bytes{0x01, 0x42, 0x0A, 0x00, 0x01}, std::nullopt, 1), ElementsAre());
  EXPECT_THAT(set.Receive(Bytes{0x01, 0, 0, 0, 0x07}, std::nullopt, 1), ElementsAre());
  EXPECT_THAT(set.Receive(Bytes{0x43, 0x97, 0, 0, 0x01}, std::nullopt, 1), ElementsAre());
  const sets::Change changes = set.TakeChanges(1);
  EXPECT_EQ(changes.frequency_10hz, 43970000U);
  EXPECT_EQ(changes.mode, sets::Mode::kUsb);
  EXPECT_EQ(changes.locked, std::nullopt);
  EXPECT_TRUE(IsEmpty(set.TakeChanges(1)));
}

struct Step {
  double at_s;
  Bytes command;  // empty: none
  std::optional<bool> locked;
  std::optional<bool> powered;
};

void Play(Model model, const std::vector<Step>& steps) {
  SetSide set(As(model));
  for (const Step& step : steps) {
    set.Receive(step.command, std::nullopt, step.at_s);
    const sets::Change changes = set.TakeChanges(step.at_s);
    EXPECT_EQ(changes.locked, step.locked) << step.at_s;
    EXPECT_EQ(changes.powered, step.powered) << step.at_s;
  }
  EXPECT_EQ(set.NextDueS(), std::nullopt);
}

// Five zero bytes lock an FT817, and wake it before a power command.
TEST(SetSide, AWakeUpIsNoLock) {
  Play(Model::kFT817, {{1.0, kLock, {}, {}}, {1.05, kPowerOn, {}, true}, {2, {}, {}, {}}});
  Play(Model::kFT817, {{1.0, kLock, {}, {}}, {1.05, kPowerOff, {}, false}, {2, {}, {}, {}}});
  Play(Model::kFT817, {{1.0, kLock, {}, {}}, {1.1, {}, {}, {}}, {1.21, {}, true, {}}});
  Play(Model::kFT817, {{1.0, kLock, {}, {}}, {1.1, kUnlock, false, {}}, {2, {}, {}, {}}});
  Play(Model::kFT817, {{1.0, kLock, {}, {}}, {1.3, kPowerOn, true, true}});
  Play(Model::kFT840, {{1.0, {0, 0, 0, 1, 0x04}, true, {}}, {1.1, {0, 0, 0, 0, 0x04}, false, {}}});
}

TEST(SetSide, TellsWhenTheLockIsDue) {
  SetSide set(As(Model::kFT817));
  set.Receive(kLock, std::nullopt, 5);
  EXPECT_DOUBLE_EQ(*set.NextDueS(), 5.2);
}

}  // namespace
}  // namespace kestrum::rigbridge
