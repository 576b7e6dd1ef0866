#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "antenna.h"
#include "faults.h"
#include "sets/rig.h"

namespace kestrum::drivesim {

struct Options {
  std::string directory;
  sets::Model model = sets::Model::FT817;
  sets::RigSetup rig;
  std::string log_path;
  std::string control_path;
  Antenna antenna = Antenna::Beam;
  double speedup = 1;
  std::optional<double> laps;  ///< without: on and on
  std::optional<double> wall_limit_s;
  std::optional<std::int64_t> start_utc_s;
  std::vector<FaultRow> faults;
  bool gps = true;
  bool gsa = false;
  bool help = false;
  bool version = false;
};

struct ParsedOptions {
  Options options;
  std::string error;  ///< empty when the command line was understood
};

/// `arguments` without the program's name.
ParsedOptions ParseOptions(const std::vector<std::string>& arguments);

std::string HelpText();
/// "drivesim 1.02"
std::string VersionText();

}  // namespace kestrum::drivesim
