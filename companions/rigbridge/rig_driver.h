#pragma once

#include <optional>
#include <string>

#include "bridge_settings.h"
#include "common/fault.h"

namespace kestrum::rigbridge {

// Why a setting did not reach the rig.
struct Refusal {
  bool for_good = false;  // the rig or its driver cannot do this at all
  std::string reason;
};

// The real rig. Each call may block for seconds; one thread makes them all.
class RigDriver {
 public:
  virtual ~RigDriver() = default;

  virtual Outcome Open(const BridgeSettings& settings) = 0;
  virtual void Close() = 0;

  // dB relative to S9 or the rig's own figure, as the settings say.
  virtual Result<double> ReadMeter() = 0;
  // Nothing when the rig does not tell.
  virtual std::optional<double> ReadFrequencyHz() = 0;

  virtual std::optional<Refusal> SetFrequencyHz(double hz) = 0;
  virtual std::optional<Refusal> SetMode(sets::Mode mode) = 0;
  virtual std::optional<Refusal> SetLock(bool locked) = 0;
  virtual std::optional<Refusal> SetPower(bool on) = 0;
};

}  // namespace kestrum::rigbridge
