#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "faults.h"

namespace kestrum::drivesim {

// One line that was typed or written to the control pipe.
struct ControlCommand {
  enum class Kind { kFault, kClear, kMeter, kAuto, kQuit };
  Kind kind = Kind::kAuto;
  std::optional<FaultKind> fault;  // of Fault; of Clear when only one kind is meant
  double duration_s = kNoEnd;
  int meter = 0;
};

// Nothing when the line is none of the commands.
std::optional<ControlCommand> ParseControl(std::string_view line);

// Cuts a stream into lines, across reads.
class LineSplitter {
 public:
  // The lines that are complete now, without their ends. A line of more than 4096 bytes is cut.
  std::vector<std::string> Add(std::string_view piece);

 private:
  std::string rest_;
};

}  // namespace kestrum::drivesim
