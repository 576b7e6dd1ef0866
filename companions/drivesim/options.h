#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "antenna.h"
#include "common/fault.h"
#include "faults.h"
#include "sets/rig.h"

namespace kestrum::drivesim {

struct Options {
  std::string directory;
  sets::Model model = sets::Model::kFT817;
  sets::RigSetup rig;
  std::string log_path;
  std::string control_path;
  Antenna antenna = Antenna::kBeam;
  double speedup = 1;
  std::optional<double> laps;  // without: on and on
  std::optional<double> wall_limit_s;
  std::optional<std::int64_t> start_utc_s;
  std::vector<FaultRow> faults;
  bool gps = true;
  bool gsa = false;
  bool help = false;
  bool version = false;
};

// `arguments` without the program's name.
Result<Options> ParseOptions(const std::vector<std::string>& arguments);

std::string HelpText();
// "drivesim 1.02"
std::string VersionText();

}  // namespace kestrum::drivesim
