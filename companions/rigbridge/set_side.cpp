#include "set_side.h"

#include <utility>

namespace kestrum::rigbridge {
namespace {

// No acknowledges: Kestrum would take them for the start of the next reading.
sets::RigSetup Setup() {
  sets::RigSetup setup;
  setup.acknowledges = false;
  setup.sleeps = false;
  return setup;
}

}  // namespace

bool IsFresh(const Reading& reading, double now_s) {
  return now_s - reading.at_s <= kFreshS;
}

void Merge(sets::Change& changes, const sets::Change& newer) {
  if (newer.frequency_10hz) changes.frequency_10hz = newer.frequency_10hz;
  if (newer.mode) changes.mode = newer.mode;
  if (newer.locked) changes.locked = newer.locked;
  if (newer.powered) changes.powered = newer.powered;
}

bool IsEmpty(const sets::Change& change) {
  return !change.frequency_10hz && !change.mode && !change.locked && !change.powered;
}

SetSide::SetSide(const BridgeSettings& settings)
    : settings_(settings), set_(sets::MakeRig(settings.act_as, Setup())) {}

sets::Bytes SetSide::Receive(std::span<const std::uint8_t> bytes, const std::optional<Reading>& newest,
                             double now_s) {
  std::optional<int> meter;
  if (newest && IsFresh(*newest, now_s)) {
    meter = MeterReading(newest->value, settings_.meter, settings_.act_as);
  }
  sets::Bytes replies;
  commands_.DropStale(now_s);
  SettleLock(now_s);
  for (const std::uint8_t byte : bytes) {
    const auto command = commands_.Add(byte, now_s);
    if (!command) continue;
    const sets::Answer answer = set_->Handle(*command, meter);
    replies.insert(replies.end(), answer.reply.begin(), answer.reply.end());
    Collect(answer.change, now_s);
  }
  return replies;
}

void SetSide::Collect(const sets::Change& change, double now_s) {
  const bool may_be_wake_up = settings_.act_as == sets::Model::kFT817 && change.locked == true;
  if (change.locked) lock_at_s_.reset();
  if (may_be_wake_up) {
    lock_at_s_ = now_s + kWakeUpS;
    return;
  }
  if (change.powered) lock_at_s_.reset();
  Merge(changes_, change);
}

void SetSide::SettleLock(double now_s) {
  if (!lock_at_s_ || now_s < *lock_at_s_) return;
  changes_.locked = true;
  lock_at_s_.reset();
}

sets::Change SetSide::TakeChanges(double now_s) {
  SettleLock(now_s);
  return std::exchange(changes_, {});
}

std::optional<double> SetSide::NextDueS() const {
  return lock_at_s_;
}

}  // namespace kestrum::rigbridge
