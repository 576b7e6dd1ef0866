#include <cmath>

#include "bridge_settings.h"
#include "common/fault_text.h"
#include "support/fuzz.h"

// The input is a rigbridge.conf; its lines are taken as a command line, too.
namespace kestrum::rigbridge {
namespace {

using fuzz::Require;

void CheckSettings(const BridgeSettings& settings) {
  Require(settings.model >= 0 && settings.speed >= 0, "no negative numbers");
  Require(settings.device.size() <= 250, "a device that Hamlib takes");
  Require(settings.act_as == sets::Model::kFT840 || settings.act_as == sets::Model::kFT817,
          "a set that is played");
  Require(settings.link.size() == 4 && settings.link.starts_with("com"), "a port of Kestrum", settings.link);
  Require(std::isfinite(settings.meter.offset), "a finite offset");
  for (const double value : {-1e300, -54.0, 0.0, 60.0, 1e300}) {
    const int raw = RawOf(MeterReading(value, settings.meter, settings.act_as), settings.act_as);
    Require(raw >= 0 && raw <= 255, "a raw value", std::to_string(raw));
  }
  const ParsedConf again = ParseConf(ConfText(settings));
  Require(!again.complaint && ConfText(again.settings) == ConfText(settings), "what is written is read back",
          ConfText(settings));
}

void CheckFault(const Fault& fault) {
  const std::string text = TextOf(fault);
  Require(!text.empty() && text.size() < 200 && text.find('\n') == std::string::npos, "one line of complaint",
          text);
}

}  // namespace
}  // namespace kestrum::rigbridge

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum::rigbridge;
  const std::string text = kestrum::fuzz::Text(data, size);
  const ParsedConf parsed = ParseConf(text);
  if (parsed.complaint) CheckFault(*parsed.complaint);
  CheckSettings(parsed.settings);
  std::vector<std::string> arguments;
  for (std::size_t from = 0; from <= text.size();) {
    const std::size_t end = std::min(text.find('\n', from), text.size());
    arguments.push_back("--" + text.substr(from, end - from));
    from = end + 1;
  }
  const auto invocation = ParseCommandLine(arguments);
  if (!invocation) {
    CheckFault(invocation.fault());
    return 0;
  }
  BridgeSettings settings;
  for (const auto& [name, value] : invocation.value().fields) {
    kestrum::fuzz::Require(Set(settings, name, value).ok(), "what the command line took is set", name);
  }
  CheckSettings(settings);
  return 0;
}
