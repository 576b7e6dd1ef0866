#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/fault.h"
#include "meter_scale.h"

namespace kestrum::rigbridge {

// What the user chooses; each field is a line "name=value" of rigbridge.conf and an option "--name value".
struct BridgeSettings {
  int model = 0;       // Hamlib's number of the rig; 0 for none
  std::string device;  // serial port, or host:port; empty for Hamlib's own default
  int speed = 0;       // baud; 0 for the rig's default
  sets::Model act_as = sets::Model::kFT840;
  MeterScale meter;
  std::string link = "com1";  // com1 to com6: the port's name beside Kestrum
};

// Sets one field by its name in rigbridge.conf.
Outcome Set(BridgeSettings& settings, std::string_view name, std::string_view value);

struct ParsedConf {
  BridgeSettings settings;
  std::optional<Fault> complaint;  // about the first line that was not understood
};

// Lines "name=value"; "#" and ";" begin a comment. Lines that are not understood leave the default.
ParsedConf ParseConf(std::string_view text);
// The text of rigbridge.conf; ParseConf reads it back.
std::string ConfText(const BridgeSettings& settings);

struct Invocation {
  // Fields named on the command line, in their order, over those of rigbridge.conf.
  std::vector<std::pair<std::string, std::string>> fields;
  std::string directory;  // of the link; empty for the program's own
  bool window = true;
  bool list = false;
  bool help = false;
  bool version = false;
};

// `arguments` without the program's name.
Result<Invocation> ParseCommandLine(const std::vector<std::string>& arguments);

std::string HelpText();
// "rigbridge 1.02"
std::string VersionText();

}  // namespace kestrum::rigbridge
