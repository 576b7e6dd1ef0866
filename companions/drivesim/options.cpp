#include "options.h"

#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

#include "nmea.h"

namespace kestrum::drivesim {
namespace {

std::optional<double> ParseNumber(std::string_view text) {
  double value = 0;
  const auto [stop, error] =
      std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  if (error != std::errc{} || stop != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

bool SetModel(Options& options, const std::string& value) {
  const auto model = sets::ModelOf(value);
  if (model) options.model = *model;
  return model.has_value();
}

bool SetFrequency(Options& options, const std::string& value) {
  const auto khz = ParseNumber(value);
  if (!khz || *khz < 100 || *khz > 999999) return false;
  options.rig.frequency_hz = static_cast<std::uint32_t>(std::llround(*khz * 1000));
  return true;
}

bool SetSpeedup(Options& options, const std::string& value) {
  const auto speedup = ParseNumber(value);
  if (!speedup || *speedup < 0.01 || *speedup > 1000) return false;
  options.speedup = *speedup;
  return true;
}

bool SetAntenna(Options& options, const std::string& value) {
  const auto antenna = AntennaOf(value);
  if (antenna) options.antenna = *antenna;
  return antenna.has_value();
}

bool SetLaps(Options& options, const std::string& value) {
  options.laps = ParseNumber(value);
  return options.laps && *options.laps > 0 && *options.laps <= 1000;
}

bool SetLimit(Options& options, const std::string& value) {
  options.wall_limit_s = ParseSeconds(value);
  return options.wall_limit_s.has_value();
}

bool SetStart(Options& options, const std::string& value) {
  options.start_utc_s = ParseUtc(value);
  return options.start_utc_s.has_value();
}

bool SetOnOff(bool& flag, const std::string& value) {
  flag = value == "on";
  return flag || value == "off";
}

bool SetText(std::string& text, const std::string& value) {
  text = value;
  return !value.empty();
}

struct ValueOption {
  std::string_view name;
  std::string_view wanted;
  bool (*set)(Options&, const std::string&);
};
constexpr std::array<ValueOption, 12> kValueOptions = {{
    {"--dir", "a folder", [](Options& o, const std::string& v) { return SetText(o.directory, v); }},
    {"--rig", "FT817, FT840, FT847, FT857 or FT897", SetModel},
    {"--frequency", "kHz", SetFrequency},
    {"--antenna", "beam or vertical", SetAntenna},
    {"--laps", "a number above 0, up to 1000", SetLaps},
    {"--log", "a file", [](Options& o, const std::string& v) { return SetText(o.log_path, v); }},
    {"--control", "a path", [](Options& o, const std::string& v) { return SetText(o.control_path, v); }},
    {"--speedup", "a factor from 0.01 to 1000", SetSpeedup},
    {"--seconds", "seconds", SetLimit},
    {"--start-utc", "a moment like 2024-05-01T12:00:00Z", SetStart},
    {"--acks", "on or off", [](Options& o, const std::string& v) { return SetOnOff(o.rig.acknowledges, v); }},
    {"--power", "on or off", [](Options& o, const std::string& v) { return SetOnOff(o.rig.powered, v); }},
}};

bool SetFlag(Options& options, const std::string& name) {
  if (name == "--no-gps") {
    options.gps = false;
  } else if (name == "--gsa") {
    options.gsa = true;
  } else if (name == "--help" || name == "-h") {
    options.help = true;
  } else if (name == "--version") {
    options.version = true;
  } else {
    return false;
  }
  return true;
}

// A file of that name, else the text itself.
Outcome SetFaults(Options& options, const std::string& value) {
  std::string text = value;
  if (std::ifstream file(value); file) {
    std::ostringstream content;
    content << file.rdbuf();
    text = content.str();
  }
  Result<std::vector<FaultRow>> script = ParseFaults(text);
  if (!script) return script.fault();
  options.faults = std::move(script).value();
  return Done{};
}

Outcome SetValue(Options& options, const std::string& name, const std::string& value) {
  if (name == "--faults") return SetFaults(options, value);
  for (const ValueOption& option : kValueOptions) {
    if (option.name != name) continue;
    if (option.set(options, value)) return Done{};
    std::string reason = name;
    return Fault{
        "", reason.append(" wants ").append(option.wanted).append(", not \"").append(value).append("\"")};
  }
  return Fault{"", "unknown option " + name};
}

bool TakesValue(const std::string& name) {
  if (name == "--faults") return true;
  for (const ValueOption& option : kValueOptions) {
    if (option.name == name) return true;
  }
  return false;
}

}  // namespace

Result<Options> ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    std::string name = arguments[i];
    if (SetFlag(options, name)) continue;
    const std::size_t equals = name.find('=');
    std::string value;
    if (equals != std::string::npos) {
      value = name.substr(equals + 1);
      name.resize(equals);
    } else if (TakesValue(name)) {
      if (i + 1 == arguments.size()) return Fault{"", name + " wants a value"};
      value = arguments[++i];
    }
    if (const Outcome set = SetValue(options, name, value); !set) return set.fault();
  }
  if (options.directory.empty() && !options.help && !options.version) return Fault{"", "--dir is missing"};
  return options;
}

std::string VersionText() {
  return "drivesim " DRIVESIM_VERSION;
}

std::string HelpText() {
  return R"(Usage: drivesim --dir DIR [options]

A simulated drive around a transmitter. DIR/com1 becomes the CAT port of a rig whose
S-meter follows the drive, DIR/gps a GPS receiver in the car (NMEA, once a second). A
lap leads over two roads, 40 km, about 40 minutes, and through a tunnel without a fix.

  --dir DIR           folder for the links com1 and gps; made when it is missing
  --rig MODEL         FT817 (default), FT840, FT847, FT857 or FT897
  --frequency KHZ     what the rig is tuned to at the start (3630)
  --antenna NAME      what the transmitter feeds: beam (default), an array that points
                      to 235 degrees, or vertical, the same in all directions
  --laps N            after N laps the car stands, and a line says "arrived"
  --start-utc TIME    the receiver's clock at the start, 2024-05-01T12:00:00Z (now)
  --speedup X         X simulated seconds in a second, 0.01 to 1000 (1)
  --seconds N         end after N real seconds
  --no-gps            no GPS receiver
  --gsa               the receiver sends GSA sentences too
  --acks on|off       one byte after each setting command: FT817, FT857, FT897 (on)
  --power on|off      an FT817 that is switched on or off at the start (on)
  --log FILE          one line for each command (rx), reply (tx) and event (--), with
                      the simulated seconds since the start
  --faults SCRIPT     a file, or the text itself: rows second:kind:duration, separated
                      by commas or line ends, in simulated seconds; without a duration
                      to the end. Example: 10:silence:5,20:garbage:3,40:vanish:10
  --control PATH      make a pipe there and obey the lines written to it
  --help, --version

Faults: silence, garbage, short, long, late, wrong (the rig's replies); vanish,
gps-vanish (the port is unplugged); nofix, gps-silence (the receiver).

Lines obeyed from the pipe and from the standard input:
  KIND [SECONDS]      a fault from now on        clear [KIND]   end what is on
  smeter N            hold the S-meter at N      auto           let it follow the drive
  quit
)";
}

}  // namespace kestrum::drivesim
