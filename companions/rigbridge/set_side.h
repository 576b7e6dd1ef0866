#pragma once

#include <memory>
#include <optional>
#include <span>

#include "bridge_settings.h"
#include "sets/command_collector.h"
#include "sets/rig.h"

namespace kestrum::rigbridge {

// A value from the rig and when it came, seconds of the steady clock.
struct Reading {
  double value = 0;  // dB relative to S9, or the rig's own figure
  double at_s = 0;
};

// An older value is no value.
inline constexpr double kFreshS = 1.0;
bool IsFresh(const Reading& reading, double now_s);

// Each field of `newer` that is there replaces that of `changes`.
void Merge(sets::Change& changes, const sets::Change& newer);
bool IsEmpty(const sets::Change& change);

// The set that Kestrum sees: answers at once from the newest value, and collects what Kestrum wants set.
class SetSide {
 public:
  // On an FT817 five zero bytes are both "lock" and the wake-up before a power command; so long a lock waits
  // for what follows.
  static constexpr double kWakeUpS = 0.2;

  explicit SetSide(const BridgeSettings& settings);

  // What the set replies to these bytes. `newest`: the newest value, of any age.
  sets::Bytes Receive(std::span<const std::uint8_t> bytes, const std::optional<Reading>& newest,
                      double now_s);
  // What Kestrum has asked for and is due, once.
  sets::Change TakeChanges(double now_s);
  // When TakeChanges has more to give without a further command; nothing when it has not.
  std::optional<double> NextDueS() const;
  // The line hung up: an incomplete command is forgotten.
  void HangUp() { commands_.Clear(); }

 private:
  void Collect(const sets::Change& change, double now_s);
  void SettleLock(double now_s);

  BridgeSettings settings_;
  std::unique_ptr<sets::Rig> set_;
  sets::CommandCollector commands_;
  sets::Change changes_;
  std::optional<double> lock_at_s_;  // a lock that may be a wake-up
};

}  // namespace kestrum::rigbridge
