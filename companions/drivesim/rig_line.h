#pragma once

#include <deque>
#include <functional>
#include <span>

#include "command_log.h"
#include "faults.h"
#include "random.h"
#include "sets/command_collector.h"
#include "sets/rig.h"

namespace kestrum::drivesim {

// A moment on both clocks, seconds since the start.
struct Moment {
  double wall_s = 0;
  double sim_s = 0;
};

// The line between the computer and the set: it collects commands of five bytes, asks the set, and spoils
// the replies as the faults say. Gaps and delays are of the wall clock, faults of the simulated one.
class RigLine {
 public:
  static constexpr double kLateS = 0.08;

  // `meter` tells the S-meter at a simulated second.
  RigLine(sets::Rig& rig, FaultBoard& faults, CommandLog& log, std::function<int(double)> meter);

  void Receive(std::span<const std::uint8_t> bytes, Moment now);
  // What has to go out by now; drops an incomplete command whose time is over.
  sets::Bytes TakeOutput(Moment now);
  // Wall second at which TakeOutput has something to do by itself; kNoEnd for never.
  double NextWallS() const;
  // The plug was pulled: nothing half-done survives.
  void Reset();

 private:
  struct Pending {
    double due_wall_s = 0;
    sets::Bytes bytes;
  };
  void DropIncomplete(Moment now);
  void Execute(const sets::Command& command, Moment now);
  // The reply as the faults leave it; names the fault in `fault` when there is one.
  sets::Bytes Spoil(const sets::Answer& answer, double sim_s, std::string& fault);

  sets::Rig& rig_;
  FaultBoard& faults_;
  CommandLog& log_;
  Random noise_{1};  // the same noise on each drive
  std::function<int(double)> meter_;
  sets::CommandCollector commands_;
  std::deque<Pending> output_;
};

}  // namespace kestrum::drivesim
